#pragma once

#include <string>
#include <string_view>

#include "app/common/folder/data_folder.h"
#include "app/common/keyboard/keyboard.h"

namespace tappora {

// What `tappora keys` does, on the chosen board and layout.

/// Whose keys.
struct KeysOptions {
    FolderOptions folder;
    KeyboardOptions keyboard;
};

/// Refuses a word that no key has room for, or that would steer a terminal; UsageError, which begins with
/// `what`.
void requireWordForKey(std::string_view what, const std::string& word);

void listKeys(const KeysOptions& options, const Environment& environment, bool json);

/// Gives a key a word of the user's own; an empty one takes it away. UsageError for a key that the board has
/// not, and for a word that no key has room for.
void labelKey(const std::string& key, const std::string& word, const KeysOptions& options,
              const Environment& environment);

/// Asks for each key on the terminal, and keeps what it types.
void learnKeys(const KeysOptions& options, const Environment& environment);

/// Forgets what was learned of the board's keys.
void forgetKeys(const KeysOptions& options, const Environment& environment);

}  // namespace tappora
