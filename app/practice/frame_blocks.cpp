#include "app/practice/frame_blocks.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "app/practice/figures.h"
#include "core/foundation/language_rules.h"
#include "core/foundation/text_pieces.h"

namespace tappora {
namespace {

using tapcore::LetterState;

/// How far a letter is, in one column: eighths of a block, or tenths where only ASCII can be shown.
std::string progressMark(double progress, bool unicode) {
    constexpr std::array<const char*, 8> eighths = {"▁", "▁", "▂", "▃", "▄", "▅", "▆", "▇"};
    if (unicode) return eighths[std::min<std::size_t>(static_cast<std::size_t>(progress * 8), 7)];
    return std::to_string(std::min<int>(static_cast<int>(progress * 10), 9));
}

Span letterMark(const Trainer& trainer, const std::string& letter, bool unicode) {
    switch (trainer.state(letter)) {
        case LetterState::notStarted:
            return {unicode ? "·" : ".", SpanStyle::faint};
        case LetterState::learned:
            return {unicode ? "█" : "*", SpanStyle::learned};
        case LetterState::slipping:
            return {"~", SpanStyle::slipping};
        default:
            return {progressMark(trainer.setup().rules.progress(trainer.total(letter)), unicode),
                    SpanStyle::learning};
    }
}

}  // namespace

Frame stacked(const std::vector<Block>& blocks, const ScreenShape& shape) {
    std::vector<const Block*> byRank;
    for (const Block& block : blocks) byRank.push_back(&block);
    std::stable_sort(byRank.begin(), byRank.end(), [](auto* a, auto* b) { return a->rank < b->rank; });
    std::size_t room = shape.lines;
    std::set<const Block*> fitting;
    for (const Block* block : byRank) {
        if (block->lines.empty() || block->lines.size() > room) continue;
        room -= block->lines.size();
        fitting.insert(block);
    }
    Frame frame;
    for (const Block& block : blocks) {
        if (!fitting.contains(&block)) continue;
        if (!frame.lines.empty() && room > 0) {
            frame.lines.emplace_back();
            --room;
        }
        for (const FrameLine& line : block.lines) frame.lines.push_back(clipped(line, shape.columns));
    }
    return frame;
}

FrameLine titleLine(const Trainer& trainer, const ScreenShape& shape) {
    const TrainerSetup& setup = trainer.setup();
    const FrameLine title = {{fmt::format("{} on {}, lesson {}", tapcore::englishName(setup.model->language),
                                          setup.layout, trainer.lessonNumber()),
                              SpanStyle::strong}};
    const std::string today = minutes(trainer.todaySeconds());
    const std::string goal = minutes(setup.goalSeconds);
    const std::size_t room = shape.columns - std::min(columnsOf(title) + 1, shape.columns);
    return spread(title,
                  fitting({{{today + " of " + goal + " today", SpanStyle::faint}},
                           {{today + " of " + goal, SpanStyle::faint}}},
                          room),
                  shape.columns);
}

std::vector<FrameLine> letterLines(const Trainer& trainer, const ScreenShape& shape) {
    constexpr std::size_t columnsOfLetter = 3;
    std::vector<FrameLine> lines;
    for (const std::string& letter : trainer.setup().model->order) {
        if (lines.empty() || columnsOf(lines.back()) + columnsOfLetter - 1 > shape.columns)
            lines.emplace_back();
        Span mark = letterMark(trainer, letter, shape.unicode);
        lines.back().push_back({letter, trainer.isOpen(letter) ? SpanStyle::plain : SpanStyle::faint});
        mark.text += ' ';
        lines.back().push_back(std::move(mark));
    }
    return lines;
}

std::vector<FrameLine> noticeLines(const std::string& notice) {
    std::vector<FrameLine> lines;
    for (std::string_view rest = notice; !rest.empty();)
        lines.push_back({{std::string(tapcore::takePiece(rest, '\n')), SpanStyle::wrong}});
    return lines;
}

}  // namespace tappora
