"""Split boards with flat keys in shifted columns."""

from .split import FIVE, SIX, Slot, arc, columns, split, tilted, turned

FIRST_LAYER = "Codes of the firmware's first layer."

NUMBERS = "1 2 3 4 5 | 6 7 8 9 0"
UPPER = "q w e r t | y u i o p"
HOME = "a s d f g | h j k l semicolon"
LOWER = "z x c v b | n m comma period slash"


def corne():
    shifts = [0.37, 0.37, 0.12, 0, 0.12, 0.24]
    thumbs = [Slot(3.5, 3.12), Slot(4.5, 3.16, r=12, rx=4.5, ry=4.16), Slot(5.5, 2.87, h=1.5, r=24, rx=5.5, ry=4.37)]
    return split("corne", "Corne", "foostan", 15, [
        ("upper", columns(0, shifts, SIX), f"tab {UPPER} delete"),
        ("home", columns(1, shifts, SIX), f"left-control {HOME} quote"),
        ("lower", columns(2, shifts, SIX), f"left-shift {LOWER} escape"),
        ("thumb", thumbs, "left-command ~lower space* | return* ~raise right-option"),
    ], FIRST_LAYER)


def lily58():
    shifts = [0.5, 0.375, 0.125, 0, 0.125, 0.25]
    inner = [Slot(6, 2.75, finger="index")]
    thumbs = [Slot(2.5, 4.125), Slot(3.5, 4.15), Slot(4.5, 4.25), tilted(6.3, 4.95, 30, h=1.5)]
    return split("lily58", "Lily58", "kata0510", 17, [
        ("number", columns(0, shifts, SIX), f"escape {NUMBERS} grave"),
        ("upper", columns(1, shifts, SIX), f"tab {UPPER} minus"),
        ("home", columns(2, shifts, SIX), f"left-control {HOME} quote"),
        ("lower", columns(3, shifts, SIX) + inner,
         "left-shift z x c v b left-bracket | right-bracket n m comma period slash right-shift"),
        ("thumb", thumbs, "left-option left-command ~lower space* | return* ~raise delete right-command"),
    ], FIRST_LAYER)


def sofle():
    shifts = [0.5, 0.375, 0.125, 0, 0.125, 0.25]
    thumbs = [Slot(1.5, 4.375), Slot(2.5, 4.125), Slot(3.5, 4.15), Slot(4.5, 4.25), tilted(6.3, 4.95, 30, h=1.5)]
    return split("sofle", "Sofle", "Josef Adamčík", 17, [
        ("number", columns(0, shifts, SIX), f"grave {NUMBERS} ~right-grave"),
        ("upper", columns(1, shifts, SIX), f"escape {UPPER} delete"),
        ("home", columns(2, shifts, SIX), f"tab {HOME} quote"),
        ("lower", columns(3, shifts, SIX), f"left-shift {LOWER} right-shift"),
        ("thumb", thumbs, "left-command left-option left-control ~lower return* | "
                          "space* ~raise right-control right-option right-command"),
    ], FIRST_LAYER + " The two knobs are not keys.")


def kyria():
    shifts = [0.75, 0.75, 0.25, 0, 0.25, 0.4]
    centre = 4.1, 8.3
    upper = arc(*centre, (30, 45), radius=5.4)
    lower = [Slot(2.5, 3.35), Slot(3.5, 3.35)] + arc(*centre, (15, 30, 45))
    return split("kyria", "Kyria", "splitkb.com", 18, [
        ("upper", columns(0, shifts, SIX), f"tab {UPPER} delete"),
        ("home", columns(1, shifts, SIX), f"left-control {HOME} quote"),
        ("lower", columns(2, shifts, SIX), f"left-shift {LOWER} right-shift"),
        ("thumb", upper, "left-bracket caps-lock | ~function-layer right-bracket"),
        ("thumb", lower, "~adjust left-command left-option space* ~navigation | "
                         "~symbols ~right-space* right-option right-command menu"),
    ], FIRST_LAYER + " Both spaces count on the left one.")


def ferris_sweep():
    shifts = [0.93, 0.31, 0, 0.28, 0.42]
    return split("ferris-sweep", "Ferris Sweep", "David Philip Barr", 13, [
        ("upper", columns(0, shifts, FIVE), UPPER),
        ("home", columns(1, shifts, FIVE), HOME),
        ("lower", columns(2, shifts, FIVE), LOWER),
        ("thumb", arc(3.04, 8.35, (15, 30)), "~left-layer space* | return* ~right-layer"),
    ], "What the thumb keys send is up to their owner; space and return are a common choice.")


def voyager():
    shifts = [0.45, 0.45, 0.2, 0, 0.2, 0.35]
    return split("voyager", "Voyager", "ZSA", 16, [
        ("number", columns(0, shifts, SIX), f"equal {NUMBERS} minus"),
        ("upper", columns(1, shifts, SIX), f"forward-delete {UPPER} backslash"),
        ("home", columns(2, shifts, SIX), f"left-shift {HOME} quote"),
        ("lower", columns(3, shifts, SIX), f"left-command {LOWER} right-control"),
        ("thumb", arc(3.9, 9.15, (20, 35)), "return* tab | delete space*"),
    ], FIRST_LAYER)


def iris():
    shifts = [0.375, 0.375, 0.125, 0, 0.125, 0.25]
    centre = 4.037, 9.15
    thumbs = [Slot(3.5, 4.2)] + arc(*centre, (15, 30))
    return split("iris", "Iris", "Keebio", 16.5, [
        ("number", columns(0, shifts, SIX), f"escape {NUMBERS} delete"),
        ("upper", columns(1, shifts, SIX), f"tab {UPPER} forward-delete"),
        ("home", columns(2, shifts, SIX), f"left-shift {HOME} quote"),
        ("lower", columns(3, shifts, SIX), f"left-control {LOWER} right-shift"),
        ("thumb", arc(*centre, (30,), radius=5.4), "home | end"),
        ("thumb", thumbs, "left-command ~lower return* | space* ~raise right-option"),
    ], FIRST_LAYER)


def atreus():
    shifts = [0.6, 0.35, 0, 0.35, 0.7, 1.1]

    def row(y, fingers):
        return turned(10, 0, 0, columns(y, shifts, fingers))

    return split("atreus", "Atreus", "Keyboardio", 11.1, [
        ("upper", row(0, FIVE), UPPER),
        ("home", row(1, FIVE), HOME),
        ("lower", row(2, FIVE + ["index"]), "z x c v b grave | backslash n m comma period slash"),
        ("bottom", row(3, FIVE[:4] + ["thumb"] * 2),
         "escape tab left-command left-shift delete* left-control | left-option space* ~fn-layer minus quote return"),
    ], FIRST_LAYER)


def boards():
    return [corne(), lily58(), sofle(), kyria(), ferris_sweep(), voyager(), iris(), atreus()]
