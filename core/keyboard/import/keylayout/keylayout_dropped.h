#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/keyboard/import/text/xml_document.h"

namespace tapcore {

/// Collects what is in a `.keylayout` file and not in the layout made of it; what is said of several places
/// or keys is said once.
class KeylayoutDropped {
  public:
    void add(const std::string& sentence) { sentences_.push_back(sentence); }
    void addAt(const XmlElement& place, const std::string& why) { places_[why].insert(place.line()); }
    void addKey(std::uint16_t code, const std::string& why) { keys_[why].insert(code); }
    /// Elements and text that no keyboard layout has, anywhere in the file.
    void addForeign(const XmlElement& keyboard);

    /// "line 7 and 2 more: WHY", the plain sentences, "key codes [1, 2]: WHY".
    std::vector<std::string> sentences() const;

  private:
    std::map<std::string, std::set<std::size_t>> places_;
    std::vector<std::string> sentences_;
    std::map<std::string, std::set<std::uint16_t>> keys_;
};

}  // namespace tapcore
