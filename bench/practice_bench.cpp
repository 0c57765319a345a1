// Promise: a lesson of 60 words takes under 2 ms, loading a letter model under 10 ms, and from a key to the
// screen of the trainer it takes under 5 ms. For comparison: drawing as many random numbers as the words
// have letters, parsing the model's JSON, and the echo of a key by cat on the same kind of terminal.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <nlohmann/json.hpp>

#include "core/foundation/characters.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/practice/letter_model.h"
#include "tests/support/pseudo_terminal.h"

namespace {

namespace fs = std::filesystem;
using namespace tapcore;

const char* const languages[] = {"de", "en", "es", "fr", "ru", "uk"};

std::string modelText(const std::string& language) {
    return readFile(fs::path(RESOURCES) / "Practice" / (language + ".json")).text;
}

void loadModel(benchmark::State& state, const std::string& language) {
    for (auto _ : state) benchmark::DoNotOptimize(LetterModel::parse(language, modelText(language)));
}

void parseJson(benchmark::State& state, const std::string& language) {
    for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json::parse(modelText(language)));
}

/// A lesson of 60 words of so many letters (0: of all), for the last of them, which is the rarest.
void makeLesson(benchmark::State& state, const std::string& language, std::size_t open) {
    const LetterModel model = LetterModel::parse(language, modelText(language));
    std::vector<std::string> letters = model.order;
    if (open > 0) letters.resize(open);
    std::uint64_t seed = 0;
    std::size_t letterCount = 0;
    for (auto _ : state) {
        SeededRandom rng(++seed);
        for (const std::string& word : model.lesson(letters, letters.back(), 60, rng))
            letterCount += characterCount(word);
    }
    state.counters["letters"] =
        benchmark::Counter(static_cast<double>(letterCount), benchmark::Counter::kAvgIterations);
}

void drawNumbers(benchmark::State& state) {
    SeededRandom rng(1);
    for (auto _ : state)
        for (int letter = 0; letter < 60 * 6; ++letter) benchmark::DoNotOptimize(rng.below(1000));
}

/// A folder for settings and practice; gone at the program's end.
struct Home {
    Home() {
        std::string name = (fs::temp_directory_path() / "tappora-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) fatal("no folder for the benchmark");
        path = name;
    }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;
    ~Home() { fs::remove_all(path); }

    fs::path path;
};

/// From writing a key to a terminal until the program on it has answered.
void answerKeys(benchmark::State& state, tappora::PseudoTerminal& terminal) {
    while (terminal.readSome(500)) continue;
    for (auto _ : state) {
        terminal.type("#");
        if (!terminal.readSome(5000)) fatal("no answer from the program on the terminal");
    }
}

/// A wrong key each time, in a lesson longer than the run: accuracy changes, the mark, and the letters'
/// progress.
void keyToScreen(benchmark::State& state) {
    const Home home;
    tappora::PseudoTerminal terminal(
        {PROGRAMS "/tappora-practice", "--folder", home.path.string(), "--language", "en", "--layout",
         "qwerty", "--seed", "1", "--words", "200", "--let-errors-stand"},
        {{"HOME", home.path.string()},
         {"XDG_CONFIG_HOME", home.path.string()},
         {"XDG_RUNTIME_DIR", home.path.string()},
         {"TAPPORA_RESOURCES", RESOURCES},
         {"TERM", "xterm-256color"},
         {"LC_ALL", "C.UTF-8"}},
        40, 120);
    answerKeys(state, terminal);
    terminal.type("\033");
}

void echoOfCat(benchmark::State& state) {
    tappora::PseudoTerminal terminal({"/bin/cat"}, {}, 40, 120);
    answerKeys(state, terminal);
}

void registerAll() {
    using benchmark::RegisterBenchmark;
    for (const std::string language : languages) {
        RegisterBenchmark(("loadModel/" + language).c_str(), loadModel, language)
            ->Unit(benchmark::kMicrosecond);
        RegisterBenchmark(("parseJson/" + language).c_str(), parseJson, language)
            ->Unit(benchmark::kMicrosecond);
        for (const std::size_t open : {6U, 12U, 0U})
            RegisterBenchmark(("lesson/" + language + "/" + std::to_string(open)).c_str(), makeLesson,
                              language, open)
                ->Unit(benchmark::kMicrosecond);
    }
}

const bool isRegistered = (registerAll(), true);

BENCHMARK(drawNumbers)->Unit(benchmark::kMicrosecond);
BENCHMARK(keyToScreen)->Iterations(400)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(echoOfCat)->Iterations(400)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
