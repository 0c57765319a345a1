#pragma once

#include <optional>
#include <string>

#include "app/common/folder/data_folder.h"

namespace tappora {

class CommandLine;
class Settings;

/// The choices of `tappora ask`.
struct AskOptions {
    std::optional<std::string> question;
    std::optional<std::string> provider;
    std::optional<std::string> model;
    std::optional<std::string> url;
    std::optional<std::string> language;
    std::optional<double> timeout;  ///< seconds
    bool shows = false;
    bool showsTools = false;
    bool listsModels = false;
    bool continues = false;
    bool startsNew = false;
    FolderOptions folder;
};

/// Reads the choices from the command line. UsageError for what no question can be put with.
void readOptions(CommandLine& line, AskOptions& options);

/// Takes the provider and the model from the settings where the command line names none. A model that is set
/// is the set provider's: it does not count for another one.
void takeSettings(AskOptions& options, const Settings& settings);

}  // namespace tappora
