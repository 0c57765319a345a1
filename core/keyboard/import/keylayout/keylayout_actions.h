#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/keyboard/import/text/xml_document.h"

namespace tapcore {

/// What a key of a `.keylayout` file types when nothing came before it, as it can be shown on the key: or why
/// it cannot.
struct KeyLegend {
    std::string text = {};
    std::string_view whyNone = {};  ///< "" when there is a text
    bool isDead = false;            ///< the text is the accent that the key holds back
};

/// The actions of a file: what keys do that wait for another key, or that another key waited for.
class KeylayoutActions {
  public:
    explicit KeylayoutActions(const XmlElement& keyboard);

    /// `key` is a <key> of the same file; `spaceKey`, when there is one, shows accents that nothing else
    /// does.
    KeyLegend legend(const XmlElement& key, const std::optional<XmlElement>& spaceKey) const;

  private:
    using Rules = std::vector<XmlElement>;  ///< <when> elements

    std::optional<Rules> rulesOf(const XmlElement& key) const;
    std::string accent(const std::string& state, const std::optional<XmlElement>& spaceKey) const;

    std::map<std::string, XmlElement, std::less<>> actions_;
    Rules terminators_;
};

}  // namespace tapcore
