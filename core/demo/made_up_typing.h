#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/key_face.h"
#include "core/files/day_file.h"
#include "core/practice/letter_model.h"
#include "core/practice/practice_day.h"
#include "core/practice/seeded_random.h"

namespace tapcore {

/// Days of typing by somebody who does not exist: to show what the program makes of a year, and to try rules
/// on thousands of folders. Office hours and quiet weekends, holidays, several machines, shortcuts, a mouse,
/// and practice that gets faster. One seed gives the same days everywhere.
class MadeUpTyping {
  public:
    /// `model` says how often each letter comes, and `legends` which key has it. Days are counted from
    /// `begin`, when practice starts; earlier days have none. Of several machines, the first is used in
    /// office hours, and the second in all others; each further one beside them, for less.
    MadeUpTyping(const LetterModel& model, const Legends& legends, std::uint64_t seed, const Day& begin,
                 std::size_t machines = 2);

    /// What was typed on a machine, from 0, on a day; empty when it was not used.
    DayFile day(const Day& day, std::size_t machine) const;
    /// All machines together.
    DayFile day(const Day& day) const;
    /// What was practised on a day, on a layout; empty on most weekends.
    PracticeDay practice(const Day& day, const std::string& layout) const;

  private:
    /// How often something comes among all that is typed.
    template <class Item>
    struct Frequency {
        Item item;
        double share = 0;
    };

    SeededRandom randomOf(const Day& day, std::uint64_t purpose) const;
    double keystrokesOf(const Day& day) const;
    /// What part of an hour's typing is done on a machine.
    double shareOf(std::size_t machine, bool atDesk) const;
    void typeHour(DayFile& file, std::int64_t hour, double keystrokes, const std::vector<double>& mood,
                  SeededRandom& random) const;

    std::uint64_t seed_;
    Day begin_;
    std::size_t machines_;
    std::vector<Frequency<KeyCode>> keys_;
    std::vector<Frequency<Tally::Chord>> chords_;
    std::vector<Frequency<std::string>> letters_;  ///< in the order they are taught
};

}  // namespace tapcore
