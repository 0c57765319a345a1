#include "app/common/terminal/key_decoder.h"

#include <utility>

#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr unsigned char escape = 0x1B;
constexpr std::size_t incomplete = static_cast<std::size_t>(-2);
constexpr std::size_t invalid = static_cast<std::size_t>(-1);

}  // namespace

std::vector<ScreenEvent> KeyDecoder::decode(std::string_view bytes, std::int64_t now) {
    settle(now).swap(events_);
    for (const char byte : bytes) take(static_cast<unsigned char>(byte), now);
    endText();
    return std::exchange(events_, {});
}

std::vector<ScreenEvent> KeyDecoder::settle(std::int64_t now) {
    if (state_ != State::escape || now - escapeAt_ < escapeDelay) return {};
    state_ = State::text;
    return {{ScreenEvent::Kind::leave}};
}

void KeyDecoder::take(unsigned char byte, std::int64_t now) {
    switch (state_) {
        case State::text:
        case State::alt:
            return takeText(byte, now);
        case State::escape:
            return takeAfterEscape(byte, now);
        case State::bracket:
            return takeAfterBracket(byte, now);
        case State::sequence:
        case State::single:
            return takeInSequence(byte, now);
    }
}

/// The reports of focus are those of xterm, ESC [ I and ESC [ O.
void KeyDecoder::takeAfterBracket(unsigned char byte, std::int64_t now) {
    const bool isFocus = byte == 'I' || byte == 'O';
    state_ = isFocus ? State::text : State::sequence;
    if (!isFocus) return takeInSequence(byte, now);
    emit(byte == 'I' ? ScreenEvent::Kind::focusIn : ScreenEvent::Kind::focusOut);
}

/// A control character ends what is not a sequence: Alt+[ begins like one.
void KeyDecoder::takeInSequence(unsigned char byte, std::int64_t now) {
    if (byte < 0x20) {
        state_ = State::text;
        return takeText(byte, now);
    }
    if (state_ == State::single) state_ = State::text;
    else if (byte == '[') state_ = State::single;  // F1 of the Linux console: ESC [ [ A
    else if (byte >= 0x40 && byte <= 0x7E) state_ = State::text;
}

void KeyDecoder::takeAfterEscape(unsigned char byte, std::int64_t now) {
    if (byte == escape) {
        emit(ScreenEvent::Kind::leave);
        escapeAt_ = now;
    } else if (byte == '[') {
        state_ = State::bracket;
    } else if (byte == 'O') {
        state_ = State::single;
    } else {
        state_ = State::alt;
        takeText(byte, now);
    }
}

void KeyDecoder::takeText(unsigned char byte, std::int64_t now) {
    const bool wasWithin = std::mbsinit(&shift_) == 0;
    const char c = static_cast<char>(byte);
    wchar_t wide = 0;
    const std::size_t size = std::mbrtowc(&wide, &c, 1, &shift_);
    if (size == incomplete) return;
    if (size == invalid) shift_ = {};
    const char32_t scalar = size == invalid ? replacement : static_cast<char32_t>(wide);
    const bool isTyped = std::exchange(state_, State::text) == State::text;
    if (isTyped && scalar < 0x20) takeControl(scalar, now);
    else if (isTyped && scalar == 0x7F) emit(ScreenEvent::Kind::erase);
    else if (isTyped) text_ += tapcore::utf8(scalar);
    // A byte that breaks a character off is the start of something itself.
    if (size == invalid && wasWithin) take(byte, now);
}

void KeyDecoder::takeControl(char32_t control, std::int64_t now) {
    switch (control) {
        case '\b':
            return emit(ScreenEvent::Kind::erase);
        case '\n':
        case '\r':
            return emit(ScreenEvent::Kind::enter);
        case 0x03:
        case 0x04:
            return emit(ScreenEvent::Kind::leave);
        case 0x1A:
            return emit(ScreenEvent::Kind::suspend);
        case escape:
            endText();
            state_ = State::escape;
            escapeAt_ = now;
            return;
        default:
            return;
    }
}

void KeyDecoder::emit(ScreenEvent::Kind kind) {
    endText();
    events_.push_back({kind});
}

void KeyDecoder::endText() {
    const std::string text = std::exchange(text_, {});
    for (const std::string_view character : tapcore::characters(text))
        events_.push_back({ScreenEvent::Kind::character, std::string(character)});
}

}  // namespace tappora
