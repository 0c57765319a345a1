#include "app/common/keyboard/key_names.h"

#include <algorithm>
#include <array>

#include "core/foundation/characters.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

using tapcore::KeyCode;

/// Command, shift, option and control of the right hand: the other one of each name is the left hand's.
constexpr std::array<KeyCode, 4> ofRightHand = {54, 60, 61, 62};

bool isRight(KeyCode code) {
    return std::find(ofRightHand.begin(), ofRightHand.end(), code) != ofRightHand.end();
}

std::set<KeyCode> printing(std::string_view name, const tapcore::Legends& legends) {
    std::set<KeyCode> codes;
    for (const auto& [code, legend] : legends)
        if (!legend.empty() && tapcore::lowercased(legend[0]) == name) codes.insert(code);
    return codes;
}

/// Of several keys of a name, those of one hand.
std::set<KeyCode> ofHand(std::string_view hand, std::string_view name, const tapcore::Legends& legends) {
    if (!name.starts_with(hand)) return {};
    std::set<KeyCode> codes = printing(name.substr(hand.size()), legends);
    if (codes.size() < 2) return {};
    std::erase_if(codes, [&](KeyCode code) { return isRight(code) != (hand == "right "); });
    return codes;
}

std::set<KeyCode> ofEitherHand(std::string_view name, const tapcore::Legends& legends) {
    for (auto codes :
         {printing(name, legends), ofHand("left ", name, legends), ofHand("right ", name, legends)})
        if (!codes.empty()) return codes;
    return {};
}

}  // namespace

std::set<KeyCode> keysNamed(std::string_view name, const tapcore::LegendSet& layout) {
    const std::string wanted = tapcore::lowercased(name);
    std::string_view number = wanted;
    if (number.starts_with("key ")) number.remove_prefix(4);
    for (const tapcore::Legends& legends : {layout.names(), layout.legends})
        if (auto codes = ofEitherHand(wanted, legends); !codes.empty()) return codes;
    const auto code = tapcore::parseKeyCode(number);
    return code ? std::set<KeyCode>{*code} : std::set<KeyCode>{};
}

}  // namespace tappora
