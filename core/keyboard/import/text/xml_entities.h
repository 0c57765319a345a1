#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tapcore {

/// What an XML document's references mean: characters by number (all of them, as XML 1.1 has it and
/// older files write it, U+0000 too), the five predefined entities, and those that its DOCTYPE declares with
/// their text. Entities kept in other files are known by name and never loaded. All expansions of one
/// document together are bounded.
class XmlEntities {
  public:
    /// A reference without a meaning.
    class Error : public std::runtime_error {
      public:
        using std::runtime_error::runtime_error;
    };

    XmlEntities() = default;
    /// `doctype` is the text between "<!DOCTYPE" and ">". Throws Error.
    explicit XmlEntities(std::string_view doctype);

    /// An attribute's value with its references replaced, and white space other than theirs as plain spaces.
    /// Throws Error naming the reference.
    std::string expanded(std::string_view value);

  private:
    void declare(std::string_view declaration);
    void expand(std::string_view value, int depth, std::string& result);
    void expandNamed(std::string_view name, int depth, std::string& result);

    std::map<std::string, std::optional<std::string>, std::less<>>
        texts_;  ///< absent for those of other files
    std::size_t charactersLeft_ = std::size_t{1} << 18;
};

}  // namespace tapcore
