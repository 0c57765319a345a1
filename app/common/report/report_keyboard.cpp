#include "app/common/report/report_keyboard.h"

#include "app/common/folder/practice_language.h"

namespace tappora {

tapcore::ReportKeyboard reportKeyboard(const KeyboardOptions& options, const tapcore::Store& store,
                                       const Environment& environment) {
    const Keyboards keyboards(environment, store);
    const LegendSet layout = keyboards.chosenLayout(options);
    return {.board = keyboards.chosenBoard(options),
            .layout = layout.id,
            .layoutName = layout.name,
            .legends = layout.legends,
            .names = layout.names(),
            .layouts = keyboards.allLayouts(),
            .letters = typedLanguage(std::nullopt, environment).letters};
}

}  // namespace tappora
