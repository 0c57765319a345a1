#include "core/keyboard/import/keylayout/keylayout_key_maps.h"

#include <algorithm>
#include <limits>
#include <set>

#include "core/foundation/integers.h"

namespace tapcore {
namespace {

std::int64_t indexOf(const XmlElement& keyMap) {
    const auto index = parseInteger(keyMap.required("index"));
    if (!index) keyMap.fail("index: not an integer");
    return *index;
}

std::uint16_t codeOf(const XmlElement& key) {
    const auto code = parseKeyCode(key.required("code"));
    if (!code) key.fail("code: not a key code");
    return *code;
}

}  // namespace

KeylayoutKeyMaps::KeylayoutKeyMaps(const XmlElement& keyboard) {
    for (const XmlElement& set : keyboard.children("keyMapSet")) {
        const std::string id = set.required("id");
        for (const XmlElement& keyMap : set.children("keyMap"))
            maps_.emplace(Name(id, indexOf(keyMap)), keyMap);
    }
}

std::optional<std::int64_t> KeylayoutKeyMaps::lowestIndex(const std::string& set) const {
    const auto first = maps_.lower_bound({set, std::numeric_limits<std::int64_t>::min()});
    if (first == maps_.end() || first->first.first != set) return std::nullopt;
    return first->first.second;
}

std::vector<XmlElement> KeylayoutKeyMaps::withBases(Name name) const {
    std::vector<XmlElement> chain;
    std::set<Name> seen;
    for (auto found = maps_.find(name); found != maps_.end() && seen.insert(name).second;
         found = maps_.find(name)) {
        chain.push_back(found->second);
        const auto index = parseInteger(found->second.attribute("baseIndex").value_or(""));
        if (!index) break;
        name = {found->second.attribute("baseMapSet").value_or(name.first), *index};
    }
    return chain;
}

KeylayoutKeyMaps::Keys KeylayoutKeyMaps::keys(const std::string& set, std::int64_t index,
                                              KeylayoutDropped& dropped) const {
    Keys result;
    std::vector<XmlElement> chain = withBases({set, index});
    std::reverse(chain.begin(), chain.end());
    for (const XmlElement& keyMap : chain) {
        std::set<std::uint16_t> own;
        for (const XmlElement& key : keyMap.children("key")) {
            const std::uint16_t code = codeOf(key);
            if (!own.insert(code).second)
                dropped.addAt(key, "its key code is earlier in the key map, too; this one counts");
            result.insert_or_assign(code, key);
        }
    }
    return result;
}

}  // namespace tapcore
