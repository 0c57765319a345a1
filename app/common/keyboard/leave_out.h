#pragma once

#include <set>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"

namespace tappora {

class CommandSyntax;

void addLeaveOutOption(CommandSyntax& command, std::vector<std::string>& keys);

/// The codes of keys by their names (see `keysNamed`); several in one text have "," between them. UsageError
/// for a name that no key has.
std::set<tapcore::KeyCode> leftOutCodes(const std::vector<std::string>& keys,
                                        const tapcore::Legends& legends);

}  // namespace tappora
