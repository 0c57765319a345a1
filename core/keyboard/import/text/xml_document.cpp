#include "core/keyboard/import/text/xml_document.h"

#include <algorithm>
#include <pugixml.hpp>

#include "core/foundation/characters.h"
#include "core/keyboard/import/text/xml_entities.h"

namespace tapcore {

struct XmlDocument::Implementation {
    std::string text;    ///< as the file has it
    std::string parsed;  ///< the copy that the nodes point into
    std::vector<std::size_t> lineStarts;
    pugi::xml_document document;
    XmlEntities entities;

    /// Where a node's mark-up starts.
    std::size_t offset(const pugi::xml_node& node) const {
        const auto name = node.offset_debug();
        return name > 0 ? static_cast<std::size_t>(name) - 1 : 0;
    }
};

namespace {

std::vector<std::size_t> lineStarts(std::string_view text) {
    std::vector<std::size_t> starts = {0};
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1))
        starts.push_back(end + 1);
    return starts;
}

XmlEntities entitiesOf(const pugi::xml_document& document, std::string_view text) {
    try {
        for (const pugi::xml_node& node : document)
            if (node.type() == pugi::node_doctype) return XmlEntities(node.value());
    } catch (const XmlEntities::Error& error) {
        failAt(text, text.find("<!DOCTYPE"), error.what());
    }
    return {};
}

}  // namespace

XmlDocument::XmlDocument(std::string_view bytes) : implementation_(std::make_unique<Implementation>()) {
    Implementation& all = *implementation_;
    all.text = xmlText(bytes);
    all.parsed = all.text;
    all.lineStarts = lineStarts(all.text);
    // References stay as they are, for the library knows none but the predefined ones.
    const auto outcome = all.document.load_buffer_inplace(
        all.parsed.data(), all.parsed.size(), pugi::parse_minimal | pugi::parse_doctype, pugi::encoding_utf8);
    const auto place = static_cast<std::size_t>(std::max<std::ptrdiff_t>(outcome.offset, 0));
    if (!outcome) failAt(all.text, place, "not well-formed XML: " + lowercased(outcome.description()));
    all.entities = entitiesOf(all.document, all.text);
}

XmlDocument::~XmlDocument() = default;

XmlElement XmlDocument::root() const {
    return {*implementation_, implementation_->document.document_element().internal_object()};
}

std::string_view XmlElement::name() const { return pugi::xml_node(node_).name(); }

std::optional<std::string> XmlElement::attribute(const char* name) const {
    const pugi::xml_attribute found = pugi::xml_node(node_).attribute(name);
    if (!found) return std::nullopt;
    try {
        return document_->entities.expanded(found.value());
    } catch (const XmlEntities::Error& error) {
        fail(std::string(name) + ": " + error.what());
    }
}

std::string XmlElement::required(const char* name) const {
    auto value = attribute(name);
    if (!value) fail("<" + std::string(this->name()) + "> without \"" + name + "\"");
    return *value;
}

std::vector<XmlElement> XmlElement::children() const {
    std::vector<XmlElement> result;
    for (const pugi::xml_node& node : pugi::xml_node(node_))
        if (node.type() == pugi::node_element) result.push_back({*document_, node.internal_object()});
    return result;
}

std::vector<XmlElement> XmlElement::children(std::string_view name) const {
    std::vector<XmlElement> result = children();
    std::erase_if(result, [&](const XmlElement& element) { return element.name() != name; });
    return result;
}

std::optional<XmlElement> XmlElement::child(std::string_view name) const {
    const pugi::xml_node found = pugi::xml_node(node_).child(std::string(name).c_str());
    return found ? std::optional(XmlElement(*document_, found.internal_object())) : std::nullopt;
}

bool XmlElement::holdsText() const {
    const auto within = pugi::xml_node(node_).children();
    return std::any_of(within.begin(), within.end(),
                       [](const pugi::xml_node& node) { return node.type() == pugi::node_pcdata; });
}

std::size_t XmlElement::line() const {
    const auto& starts = document_->lineStarts;
    const auto after =
        std::upper_bound(starts.begin(), starts.end(), document_->offset(pugi::xml_node(node_)));
    return static_cast<std::size_t>(after - starts.begin());
}

void XmlElement::fail(std::string_view why) const {
    failAt(document_->text, document_->offset(pugi::xml_node(node_)), why);
}

}  // namespace tapcore
