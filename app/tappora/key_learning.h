#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "app/common/terminal/key_decoder.h"
#include "core/files/folder_config.h"
#include "core/keyboard/board.h"

namespace tappora {

/// Asks for each key of a board that types, alone and with shift, and takes what comes for it.
class KeyLearning {
  public:
    KeyLearning(const tapcore::Board& board, const tapcore::Legends& legends);

    /// What is asked for now: "[1/94] upper row, key 1 from the left (q): press it".
    std::string prompt() const;
    /// A character is what the key types; Enter goes on without one, for a key that types nothing by itself;
    /// the key that takes back goes one step back; Esc ends it, and Ctrl-C breaks it off.
    void take(const ScreenEvent& event);
    /// Whether it was broken off, by Ctrl-C or since the terminal is gone: nothing was learned then.
    bool isStopped() const { return isStopped_; }
    bool isOver() const { return isEnded_ || at_ == 2 * keys_.size(); }

    /// What was typed, by key; "" where nothing was.
    const std::map<tapcore::KeyCode, tapcore::LearnedKey>& learned() const { return learned_; }

  private:
    struct Asked {
        tapcore::KeyCode code;
        std::string where;  ///< "upper row, key 1 from the left (q)"
    };

    bool isShifted() const { return at_ % 2 == 1; }
    std::string& typed();

    std::vector<Asked> keys_;
    std::size_t at_ = 0;  ///< a step for each key alone, and one for each with shift
    bool isEnded_ = false;
    bool isStopped_ = false;
    std::map<tapcore::KeyCode, tapcore::LearnedKey> learned_;
};

}  // namespace tappora
