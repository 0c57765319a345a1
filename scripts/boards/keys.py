"""The keys that boards are made of: macOS virtual key codes, and the fingers taught on a row-staggered board."""

CODES = {
    "a": 0, "s": 1, "d": 2, "f": 3, "h": 4, "g": 5, "z": 6, "x": 7, "c": 8, "v": 9, "section": 10, "b": 11,
    "q": 12, "w": 13, "e": 14, "r": 15, "y": 16, "t": 17, "1": 18, "2": 19, "3": 20, "4": 21, "6": 22, "5": 23,
    "equal": 24, "9": 25, "7": 26, "minus": 27, "8": 28, "0": 29, "right-bracket": 30, "o": 31, "u": 32,
    "left-bracket": 33, "i": 34, "p": 35, "return": 36, "l": 37, "j": 38, "quote": 39, "k": 40, "semicolon": 41,
    "backslash": 42, "comma": 43, "slash": 44, "n": 45, "m": 46, "period": 47, "tab": 48, "space": 49, "grave": 50,
    "delete": 51, "escape": 53, "right-command": 54, "left-command": 55, "left-shift": 56, "caps-lock": 57,
    "left-option": 58, "left-control": 59, "right-shift": 60, "right-option": 61, "right-control": 62, "fn": 63,
    "f17": 64, "keypad-decimal": 65, "keypad-multiply": 67, "keypad-plus": 69, "keypad-clear": 71,
    "keypad-divide": 75, "keypad-enter": 76, "keypad-minus": 78, "f18": 79, "f19": 80, "keypad-equal": 81,
    "keypad-0": 82, "keypad-1": 83, "keypad-2": 84, "keypad-3": 85, "keypad-4": 86, "keypad-5": 87, "keypad-6": 88,
    "keypad-7": 89, "keypad-8": 91, "keypad-9": 92, "yen": 93, "underscore": 94, "f5": 96, "f6": 97, "f7": 98,
    "f3": 99, "f8": 100, "f9": 101, "eisu": 102, "f11": 103, "kana": 104, "f13": 105, "f16": 106, "f14": 107,
    "f10": 109, "menu": 110, "f12": 111, "f15": 113, "help": 114, "home": 115, "page-up": 116,
    "forward-delete": 117, "f4": 118, "end": 119, "f2": 120, "page-down": 121, "f1": 122, "left-arrow": 123,
    "right-arrow": 124, "down-arrow": 125, "up-arrow": 126,
}

# Where eight fingers rest. Which thumb key is one differs from board to board.
RESTING = set("asdfjkl") | {"semicolon"}

_TAUGHT = {
    ("left", "pinky"): "escape f1 grave section 1 tab q caps-lock a left-shift z left-control fn left-option "
                       "left-command",
    ("left", "ring"): "f2 2 w s x",
    ("left", "middle"): "f3 3 e d c",
    ("left", "index"): "f4 f5 4 5 r t f g v b",
    ("left", "thumb"): "eisu",
    ("right", "thumb"): "space kana",
    ("right", "index"): "f6 f7 6 7 y u h j n m left-arrow",
    ("right", "middle"): "f8 8 i k comma up-arrow down-arrow",
    ("right", "ring"): "f9 9 o l period right-arrow",
    ("right", "pinky"): "f10 f11 f12 touch-id 0 minus equal yen delete p left-bracket right-bracket backslash "
                        "semicolon quote return slash underscore right-shift right-control right-option "
                        "right-command menu fn-layer",
}

TAUGHT = {name: strikes for strikes, names in _TAUGHT.items() for name in names.split()}
