#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/text_error.h"
#include "core/keyboard/board.h"
#include "core/keyboard/layout.h"

namespace tapcore {

/// Every board and every layout the program knows. Both stay sorted by name.
struct Catalog {
    /// A board's or layout's file that cannot be read or decoded: "FILE: WHY".
    class FileError : public TextError {
      public:
        FileError(std::string fileName, std::string why)
            : TextError(fileName + ": " + why), file(std::move(fileName)), underlying(std::move(why)) {}

        std::string file;        ///< its name, without the folder
        std::string underlying;  ///< what the reader or decoder said
    };

    /// Larger files are refused: ten thousand keys take a tenth of it.
    static constexpr std::size_t largestFile = std::size_t{16} << 20;

    std::vector<Board> boards;
    std::vector<Layout> layouts;

    Catalog(std::vector<Board> someBoards, std::vector<Layout> someLayouts);

    /// The files of two folders whose names end in ".json". A folder that is missing reads as empty. Throws
    /// FileError for the first file, by name, that is no board or layout.
    Catalog(const std::filesystem::path& boardsAt, const std::filesystem::path& layoutsAt);
    /// The catalog of the folders "Boards" and "Layouts" that come with the program.
    static Catalog bundled(const std::filesystem::path& resources);
    /// Of those the layouts alone.
    static Catalog bundledLayouts(const std::filesystem::path& resources);
    /// One of those, by its id, without reading the others; nothing when none has that id. Throws FileError.
    static std::optional<Board> bundledBoard(const std::filesystem::path& resources, const std::string& id);
    static std::optional<Layout> bundledLayout(const std::filesystem::path& resources, const std::string& id);

    /// The text of one file, of these or of those that boards and layouts are imported from. Throws
    /// FileError.
    static std::string readText(const std::filesystem::path& file);

    /// One file, of the user's or of the program's. Throws FileError.
    static Board readBoard(const std::filesystem::path& file);
    static Layout readLayout(const std::filesystem::path& file);

    /// A catalog with more layouts; one of the same id gives way.
    Catalog adding(std::vector<Layout> added) const;

    /// The first board or layout of an id, or null. Owned by the catalog.
    const Board* board(std::string_view id) const;
    const Layout* layout(std::string_view id) const;

    /// A layout's legends, those of its bases included, which it overrides key code by key code; empty for an
    /// unknown id.
    Legends legends(std::string_view id) const;

    /// What is wrong with the boards, with the layouts, and between them, for people to read.
    std::vector<std::string> problems() const;

    bool operator==(const Catalog&) const = default;
};

}  // namespace tapcore
