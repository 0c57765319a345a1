#pragma once

#include <set>
#include <string>
#include <vector>

#include "core/counting/tally.h"
#include "core/keyboard/legend_set.h"

namespace tappora {

class CommandSyntax;

void addLeaveOutOption(CommandSyntax& command, std::vector<std::string>& keys);

/// The codes of keys by their names (see `keysNamed`); several in one text have "," between them. UsageError
/// for a name that no key has.
std::set<tapcore::KeyCode> leftOutCodes(const std::vector<std::string>& keys,
                                        const tapcore::LegendSet& layout);

}  // namespace tappora
