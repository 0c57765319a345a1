#pragma once

#include <set>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"

namespace tappora {

class CommandSyntax;

void addLeaveOutOption(CommandSyntax& command, std::vector<std::string>& keys);

/// The codes of keys named by what they print unshifted ("space", "a"), whatever its case, or as "key 49";
/// several in one text have "," between them. UsageError for a name that no key has.
std::set<tapcore::KeyCode> leftOutCodes(const std::vector<std::string>& keys,
                                        const tapcore::Legends& legends);

}  // namespace tappora
