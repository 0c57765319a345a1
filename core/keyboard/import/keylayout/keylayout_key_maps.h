#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/keyboard/import/keylayout/keylayout_dropped.h"
#include "core/keyboard/import/text/xml_document.h"

namespace tapcore {

/// The sets of key maps of a `.keylayout` file: what each key does, for each combination of modifiers.
class KeylayoutKeyMaps {
  public:
    using Keys = std::map<std::uint16_t, XmlElement>;  ///< <key> elements by their code

    /// Throws XmlError for a set without an id and for a key map without an index.
    explicit KeylayoutKeyMaps(const XmlElement& keyboard);

    bool contains(const std::string& set, std::int64_t index) const { return maps_.contains({set, index}); }
    /// The lowest index in a set; nothing when it has no key map, or is not a set.
    std::optional<std::int64_t> lowestIndex(const std::string& set) const;
    std::size_t count() const { return maps_.size(); }

    /// The keys of a key map and of those that it builds on, as far as these are there and do not lead back;
    /// of two with one code the later counts, and the other is dropped. Throws XmlError for a code that is
    /// none.
    Keys keys(const std::string& set, std::int64_t index, KeylayoutDropped& dropped) const;

  private:
    using Name = std::pair<std::string, std::int64_t>;  ///< a set's id and an index in it

    std::vector<XmlElement> withBases(Name name) const;

    std::map<Name, XmlElement> maps_;
};

}  // namespace tapcore
