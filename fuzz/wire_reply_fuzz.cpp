#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string_view>

#include "core/assistant/dialogue.h"
#include "core/foundation/json_fields.h"

namespace {

using namespace tapcore;

/// Takes the same reply twice, as a loop would: what it asks for is answered, and the next request can be
/// written.
void talk(Dialogue& dialogue, const nlohmann::json& reply) {
    AssistantBudget budget;
    for (int step = 0; step < 2; ++step) {
        const ModelReply taken = dialogue.take(reply, budget);
        if (taken.ending == ModelReply::Ending::calls)
            dialogue.give(std::vector<AssistantTools::Output>(taken.calls.size()));
        dialogue.finish(AssistantBudget::finalWord);
        if (dialogue.request().dump().empty()) std::abort();
    }
    if (budget.input < 0 || budget.output < 0) std::abort();
    (void)dialogue.adapt(reply);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto make : {Dialogue::claude, Dialogue::chat}) {
        try {
            const auto reply = JsonValue::parse(std::string_view(reinterpret_cast<const char*>(data), size));
            const auto dialogue =
                make({"m", "system", {{"search", "", {}, {}}}, {{ChatFile::Role::user, "Why?", {}}}});
            talk(*dialogue, reply);
            (void)AssistantWire::problemMessage(reply);
            (void)AssistantWire::openaiChatModels(reply);
        } catch (const JsonError&) {
            // A reply of unknown shape: said so.
        }
    }
    return 0;
}
