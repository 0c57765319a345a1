// What is wrong with a board: Board::problems.

#include <unordered_map>
#include <unordered_set>

#include "core/counting/counter.h"
#include "core/keyboard/board.h"

namespace tapcore {
namespace {

/// Walks the keys of one board in order and notes what is wrong with each.
class Inspection {
  public:
    explicit Inspection(const std::string& board) : board_(board) {}

    void visit(const Board::Key& key) {
        if (!ids_.insert(key.id).second) note("key id " + key.id + " is used twice");
        if (key.keyCode) visitCode(key, *key.keyCode);
        if (key.w <= 0 || key.h <= 0) note(key.id + " has no size");
        if (key.r != 0 && !(key.rx && key.ry)) note(key.id + " is rotated about no point");
    }

    void note(const std::string& what) { problems_.push_back(board_ + ": " + what); }

    std::vector<std::string> take() { return std::move(problems_); }

  private:
    void visitCode(const Board::Key& key, KeyCode keyCode) {
        const std::string code = std::to_string(keyCode);
        if (keyCode >= Counter::keyCodes) note(key.id + " sends " + code + ", beyond what is counted");
        const auto [claim, isFirst] = claims_.emplace(keyCode, key.id);
        if (!isFirst)
            note("key code " + code + " is claimed by both " + std::string(claim->second) + " and " + key.id);
    }

    const std::string& board_;
    std::unordered_set<std::string_view> ids_;
    std::unordered_map<KeyCode, std::string_view> claims_;
    std::vector<std::string> problems_;
};

}  // namespace

std::vector<std::string> Board::problems() const {
    Inspection inspection(id);
    if (keys.empty()) inspection.note("no keys");
    for (const Key& key : keys) inspection.visit(key);
    return inspection.take();
}

}  // namespace tapcore
