#include "core/files/file_format.h"

namespace tapcore {
namespace {

struct Traits {
    std::string_view title, fileExtension, titlePrefix, headingPrefix;
};

constexpr std::array<Traits, 2> traits = {{
    {"Org", "org", "#+title: ", "* "},
    {"Markdown", "md", "# ", "## "},
}};

const Traits& of(FileFormat::Case format) { return traits[static_cast<std::size_t>(format)]; }

std::string line(std::string_view prefix, std::string_view text) {
    return std::string(prefix).append(text).append("\n");
}

}  // namespace

std::string_view FileFormat::title() const { return of(value).title; }
std::string_view FileFormat::fileExtension() const { return of(value).fileExtension; }

std::array<std::string_view, 3> FileFormat::readOrder() const {
    const Case other = value == org ? markdown : org;
    return {fileExtension(), of(other).fileExtension, "tsv"};
}

std::string FileFormat::titleLine(std::string_view text) const { return line(of(value).titlePrefix, text); }
std::string FileFormat::heading(std::string_view text) const { return line(of(value).headingPrefix, text); }

}  // namespace tapcore
