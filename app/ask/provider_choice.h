#pragma once

#include <functional>
#include <vector>

#include "app/ask/ask_options.h"
#include "app/ask/provider_client.h"

namespace tappora {

struct Environment;

/// The providers that the options may mean, the one to ask first: the one named, else the first that a key is
/// there for, else the servers on this machine, of which there may be several. Without `looksAround` no
/// server is looked for. UsageError and Failure say what is missing.
std::vector<ProviderAccess> chooseProviders(const AskOptions& options, const Environment& environment,
                                            bool looksAround, const std::function<bool()>& isStopped);

}  // namespace tappora
