#include QMK_KEYBOARD_H
enum layers { _BASE, _RAISE };
#define HOME_A LSFT_T(KC_A)  // a home row modifier
const uint16_t PROGMEM keymaps[][MATRIX_ROWS][MATRIX_COLS] = {
    /* | 1 | , ) } */
    [_RAISE] = LAYOUT(KC_1, KC_2, KC_3, KC_4, KC_5, KC_6),
    [_BASE] = LAYOUT(
        KC_Q, HOME_A,   KC_P, KC_SCLN, // ,
        LT(_RAISE, KC_SPC),   MO(_RAISE)
    ),
};
