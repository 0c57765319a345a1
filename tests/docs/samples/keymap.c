const uint16_t PROGMEM keymaps[][1][3] = {
    [0] = LAYOUT(KC_A, KC_B, KC_SPC),
};
