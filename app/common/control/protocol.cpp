#include "app/common/control/protocol.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/common/system/moment.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::JsonValue;
using Kind = ControlQuestion::Kind;

constexpr std::array<std::pair<Kind, std::string_view>, 3> words{
    {{Kind::status, "status"}, {Kind::pause, "pause"}, {Kind::resume, "resume"}}};

Kind readKind(const JsonValue& value) {
    const std::string word = value.string();
    for (const auto& [kind, name] : words)
        if (name == word) return kind;
    value.fail("not status, pause or resume");
}

std::string_view wordOf(Kind kind) { return words.at(static_cast<std::size_t>(kind)).second; }

}  // namespace

std::string lineOf(const ControlQuestion& question) {
    json document = {{"ask", wordOf(question.kind)}};
    if (question.until) document["until"] = utcText(*question.until);
    return tapcore::jsonLine(document);
}

std::string lineOf(const ControlAnswer& answer) {
    if (answer.status) return tapcore::jsonLine({{"status", toJson(*answer.status)}});
    return tapcore::jsonLine({{"refusal", answer.refusal}});
}

ControlQuestion readQuestion(std::string_view line) {
    const json document = JsonValue::parse(line);
    const JsonValue value(document);
    ControlQuestion question{.kind = readKind(value.member("ask"))};
    if (const auto until = value.optionalMember("until")) question.until = readMoment(*until);
    return question;
}

ControlAnswer readAnswer(std::string_view line) {
    const json document = JsonValue::parse(line);
    const JsonValue value(document);
    if (const auto refusal = value.optionalMember("refusal")) return {.refusal = refusal->string()};
    return {.status = readStatus(value.member("status"))};
}

}  // namespace tappora
