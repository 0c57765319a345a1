#pragma once

#include <cstdint>
#include <cwchar>
#include <string>
#include <string_view>
#include <vector>

namespace tappora {

/// What came from the keyboard, or the system.
struct ScreenEvent {
    enum class Kind {
        character,  ///< `text` is one, as UTF-8
        erase,      ///< the key that takes back
        enter,
        leave,     ///< Escape, Ctrl-C or Ctrl-D
        end,       ///< a signal that ends programs
        suspend,   ///< Ctrl-Z
        resize,    ///< the terminal has another size
        focusIn,   ///< the terminal's window has the keyboard again
        focusOut,  ///< another window has it
        gone,      ///< there is no terminal any more
    };
    Kind kind = Kind::character;
    std::string text = {};

    bool operator==(const ScreenEvent&) const = default;
};

/// Turns a terminal's bytes into events, whatever pieces they come in. Text is what the C library's locale
/// says it is; what is not text of it becomes U+FFFD. Keys that send an escape and more (arrows, Alt with a
/// letter) do nothing.
class KeyDecoder {
  public:
    /// So long, in milliseconds, an escape waits for what makes it one of those.
    static constexpr std::int64_t escapeDelay = 25;

    /// The events of some bytes that came at a moment.
    std::vector<ScreenEvent> decode(std::string_view bytes, std::int64_t now);

    /// What the time that passed tells: an escape that nothing followed is the Escape key. Whether one still
    /// waits.
    std::vector<ScreenEvent> settle(std::int64_t now);
    bool isWaiting() const { return state_ == State::escape; }

  private:
    enum class State {
        text,
        escape,    ///< an escape came
        alt,       ///< the rest of a character that came with an escape
        bracket,   ///< ESC [ came
        sequence,  ///< ESC [ …, up to a byte that ends it
        single,    ///< ESC O and one byte
    };

    void take(unsigned char byte, std::int64_t now);
    void takeAfterBracket(unsigned char byte, std::int64_t now);
    void takeInSequence(unsigned char byte, std::int64_t now);
    void takeAfterEscape(unsigned char byte, std::int64_t now);
    void takeText(unsigned char byte, std::int64_t now);
    void takeControl(char32_t control, std::int64_t now);
    /// Hands out the text collected, character by character.
    void endText();
    void emit(ScreenEvent::Kind kind);

    State state_ = State::text;
    std::int64_t escapeAt_ = 0;
    std::mbstate_t shift_{};  ///< of a character whose first bytes have come
    std::string text_;
    std::vector<ScreenEvent> events_;
};

}  // namespace tappora
