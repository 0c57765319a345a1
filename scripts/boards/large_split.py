"""Split boards with thumb clusters of four keys and more."""

from .split import SEVEN, SIX, Slot, arc, columns, split, turned
from .small_split import FIRST_LAYER, HOME, LOWER, NUMBERS, UPPER

TWICE = " Keys that the layer has twice count on one of them."


def ergodox_ez():
    shifts = [0.375, 0.375, 0.125, 0, 0.125, 0.25, 0.25]
    tall = [Slot(6.5, 1.25, h=1.5, finger="index")], [Slot(6.5, 2.75, h=1.5, finger="index")]
    thumbs = turned(30, 6.5, 4.25, [Slot(7.5, 3.25), Slot(8.5, 3.25), Slot(6.5, 4.25, h=2), Slot(7.5, 4.25, h=2),
                                    Slot(8.5, 4.25), Slot(8.5, 5.25)])
    return split("ergodox-ez", "ErgoDox EZ", "ZSA", 19.5, [
        ("number", columns(0, shifts, SEVEN, outer=1.5),
         "equal 1 2 3 4 5 ~upper-left-arrow | ~upper-right-arrow 6 7 8 9 0 minus"),
        ("upper", columns(1, shifts, SIX, outer=1.5) + tall[0],
         "forward-delete q w e r t ~left-toggle | ~right-toggle y u i o p backslash"),
        ("home", columns(2, shifts, SIX, outer=1.5), f"~left-delete {HOME} quote"),
        ("lower", columns(3, shifts, SIX, outer=1.5) + tall[1],
         "left-shift z x c v b ~hyper | ~meh n m comma period slash right-shift"),
        ("bottom", columns(4, shifts, SIX[:5], first=0.5),
         "grave ~left-quote ~option-shift left-arrow right-arrow | "
         "up-arrow down-arrow left-bracket right-bracket ~symbols"),
        ("thumb", thumbs[:2], "menu left-command | left-option escape"),
        ("thumb", thumbs[2:5], "space* delete home | page-up tab return*"),
        ("thumb", thumbs[5:], "end | page-down"),
    ], FIRST_LAYER + TWICE)


def moonlander():
    shifts = [0.375, 0.375, 0.125, 0, 0.125, 0.25, 0.25]
    red, *thumbs = turned(30, 6.2, 4.6, [Slot(7.0, 3.6, w=2)] + [Slot(6.2 + i, 4.6, h=1.5) for i in range(3)])
    return split("moonlander", "Moonlander", "ZSA", 19, [
        ("number", columns(0, shifts, SEVEN), "equal 1 2 3 4 5 ~upper-left-arrow | ~upper-right-arrow 6 7 8 9 0 minus"),
        ("upper", columns(1, shifts, SEVEN),
         "forward-delete q w e r t ~left-toggle | ~right-toggle y u i o p backslash"),
        ("home", columns(2, shifts, SEVEN), "~left-delete a s d f g ~hyper | ~meh h j k l semicolon quote"),
        ("lower", columns(3, shifts, SIX), f"left-shift {LOWER} right-shift"),
        ("bottom", columns(4, shifts, SIX[:5]),
         "grave ~pair ~option-shift left-arrow right-arrow | up-arrow down-arrow left-bracket right-bracket ~symbols"),
        ("thumb", [red], "menu | escape"),
        ("thumb", thumbs, "space* delete left-command | left-option tab return*"),
    ], FIRST_LAYER + TWICE)


def glove80():
    shifts = [0.5, 0.5, 0, 0, 0, 0.1]
    centre = 4.6, 10.7
    return split("glove80", "Glove80", "MoErgo", 19.5, [
        ("function", columns(0, shifts, SIX[:5]), "f1 f2 f3 f4 f5 | f6 f7 f8 f9 f10"),
        ("number", columns(1, shifts, SIX), f"equal {NUMBERS} minus"),
        ("upper", columns(2, shifts, SIX), f"tab {UPPER} backslash"),
        ("home", columns(3, shifts, SIX), f"escape {HOME} quote"),
        ("lower", columns(4, shifts, SIX), f"grave {LOWER} page-up"),
        ("bottom", columns(5, shifts, SIX[:5]),
         "~magic home end left-arrow right-arrow | up-arrow down-arrow left-bracket right-bracket page-down"),
        ("thumb", arc(*centre, (20, 35, 50), radius=5.4),
         "left-shift left-control ~lower | left-command right-control right-shift"),
        ("thumb", arc(*centre, (20, 35, 50)), "delete* forward-delete left-option | right-option return space*"),
    ], FIRST_LAYER)


def advantage360_pro():
    shifts = [0.25, 0.25, 0.1, 0, 0.1, 0.2, 0.2]
    thumbs = turned(20, 6.7, 4.7, [Slot(7.7, 3.7), Slot(8.7, 3.7), Slot(6.7, 4.7, h=2), Slot(7.7, 4.7, h=2),
                                   Slot(8.7, 4.7), Slot(8.7, 5.7)])
    return split("kinesis-advantage360-pro", "Advantage360 Pro", "Kinesis", 20.5, [
        ("number", columns(0, shifts, SEVEN, outer=1.25), "equal 1 2 3 4 5 ~keypad-layer | ~mod 6 7 8 9 0 minus"),
        ("upper", columns(1, shifts, SEVEN, outer=1.25),
         "tab q w e r t ~hotkey-1 | ~hotkey-3 y u i o p backslash"),
        ("home", columns(2, shifts, SEVEN, outer=1.25),
         "escape a s d f g ~hotkey-2 | ~hotkey-4 h j k l semicolon quote"),
        ("lower", columns(3, shifts, SIX, outer=1.25), f"left-shift {LOWER} right-shift"),
        ("bottom", columns(4, shifts, SIX[:5], first=0.25),
         "~left-fn grave caps-lock left-arrow right-arrow | "
         "up-arrow down-arrow left-bracket right-bracket ~right-fn"),
        ("thumb", thumbs[:2], "left-control left-option | left-command right-control"),
        ("thumb", thumbs[2:5], "delete* forward-delete home | page-up return space*"),
        ("thumb", thumbs[5:], "end | page-down"),
    ], FIRST_LAYER)


def boards():
    return [ergodox_ez(), moonlander(), glove80(), advantage360_pro()]
