#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/keyboard/import/text/xml_text.h"

namespace pugi {
struct xml_node_struct;
}

namespace tapcore {

class XmlElement;

/// An XML document read from a file's bytes, its entities expanded as they are asked for. Nothing but these
/// bytes is ever read.
class XmlDocument {
  public:
    /// Throws XmlError for what is not well-formed.
    explicit XmlDocument(std::string_view bytes);
    ~XmlDocument();

    XmlElement root() const;

  private:
    friend class XmlElement;
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

/// An element of a document, which must outlive it.
class XmlElement {
  public:
    std::string_view name() const;

    /// An attribute's value, or nothing when it has none of that name. XmlError for a reference that means
    /// for nothing.
    std::optional<std::string> attribute(const char* name) const;
    /// An attribute's value; XmlError when it has none of that name.
    std::string required(const char* name) const;

    /// The elements right within this one, all or those of a name, in order.
    std::vector<XmlElement> children() const;
    std::vector<XmlElement> children(std::string_view name) const;
    /// The first of that name, or nothing.
    std::optional<XmlElement> child(std::string_view name) const;

    /// Whether something other than white space is between the elements within this one.
    bool holdsText() const;

    /// Its line in the file, from 1.
    std::size_t line() const;
    /// An XmlError about this place.
    [[noreturn]] void fail(std::string_view why) const;

  private:
    friend class XmlDocument;
    XmlElement(XmlDocument::Implementation& document, pugi::xml_node_struct* node)
        : document_(&document), node_(node) {}

    XmlDocument::Implementation* document_;
    pugi::xml_node_struct* node_;
};

}  // namespace tapcore
