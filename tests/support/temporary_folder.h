#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "core/foundation/file_io.h"

namespace tapcore {

/// A folder of a test's own, gone at its end.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tappora-test-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes a file below it, and the folders it needs.
    void put(std::string_view name, std::string_view text) const {
        writeFile(path_ / name, text).requireSafe();
    }
    /// A file's text; a test failure when it cannot be read.
    std::string text(std::string_view name) const {
        const FileRead file = readFile(path_ / name);
        EXPECT_EQ(file.status, FileRead::Status::read) << name;
        return file.text;
    }

    /// Every file below it, hidden ones too, with its bytes.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_))
            if (entry.is_regular_file())
                all[entry.path().lexically_relative(path_).string()] = readBytes(entry.path()).text;
        return all;
    }

  private:
    std::filesystem::path path_;
};

}  // namespace tapcore
