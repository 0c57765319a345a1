#include <gtest/gtest.h>

#include "core/practice/lesson_length.h"
#include "core/practice/practice_course.h"
#include "core/practice/practice_request.h"
#include "core/practice/practice_rows.h"

namespace tapcore {
namespace {

using Letters = std::vector<std::string>;

TEST(LessonLength, TakesAnyStoredNumber) {
    EXPECT_EQ(LessonLength::fromStored({}), LessonLength::medium);
    EXPECT_EQ(LessonLength::fromStored(15), LessonLength::short_);
    EXPECT_EQ(LessonLength::fromStored(60), LessonLength::long_);
    EXPECT_EQ(LessonLength::fromStored(45), LessonLength::medium);
    EXPECT_EQ(LessonLength::parse(45), std::nullopt);

    EXPECT_EQ(LessonLength::words(std::nullopt), 30);
    EXPECT_EQ(LessonLength::words(0), 30);
    EXPECT_EQ(LessonLength::words(3), 5);
    EXPECT_EQ(LessonLength::words(500), 200);
    EXPECT_EQ(LessonLength::words(-1), 5);

    EXPECT_EQ(LessonLength::tag(60), 60);
    EXPECT_EQ(LessonLength::tag(45), -1);
    EXPECT_EQ(LessonLength::words(-1, 30), 45);
    EXPECT_EQ(LessonLength::words(-1, 70), 70);
    EXPECT_EQ(LessonLength::words(15, 70), 15);
}

TEST(PracticeCourse, TeachesDigitsAndMarksInTheirOrder) {
    EXPECT_EQ(PracticeCourse(PracticeCourse::digits).order(),
              (Letters{"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"}));
    EXPECT_EQ(PracticeCourse(PracticeCourse::marks).order(),
              (Letters{",", ".", "'", "-", "?", "!", ";", ":", "\"", "(", ")"}));
    EXPECT_EQ(PracticeCourse::of("0"), PracticeCourse::digits);
    EXPECT_EQ(PracticeCourse::of(")"), PracticeCourse::marks);
    for (const char* other : {"a", "", "12", "/", "٣"})
        EXPECT_EQ(PracticeCourse::of(other), std::nullopt) << other;
    EXPECT_EQ(PracticeCourse::parse("marks"), PracticeCourse::marks);
    const PracticeCourse marks = PracticeCourse::marks;
    EXPECT_EQ(marks.openedKey("azerty"), "practice.opened.marks.azerty");
    EXPECT_EQ(marks.openedKey(std::nullopt), "practice.opened.marks");
}

TEST(PracticeRows, CloseWithTheLastSpaceThatFits) {
    using Rows = std::vector<PracticeRows::Row>;
    const struct {
        const char* text;
        std::int64_t columns;
        Rows rows;
    } cases[] = {
        {"abc def ghi", 5, {{0, 4}, {4, 8}, {8, 11}}},
        {"abc def ghi", 4, {{0, 4}, {4, 8}, {8, 11}}},
        {"abc def ghi", 8, {{0, 8}, {8, 11}}},
        {"abc def ghi", 7, {{0, 4}, {4, 11}}},
        {"abcdefgh", 3, {{0, 3}, {3, 6}, {6, 8}}},
        {"ab\u00A0cd", 3, {{0, 3}, {3, 5}}},
        {"e\u0301te\u0301 te\u0301", 4, {{0, 4}, {4, 6}}},
        {"ab", 0, {{0, 1}, {1, 2}}},
        {"", 10, {}},
    };
    for (const auto& [text, columns, rows] : cases)
        EXPECT_EQ(PracticeRows::rows(text, columns), rows) << text << ", " << columns;
    const Rows rows = PracticeRows::rows("abc def ghi", 5);
    EXPECT_EQ(PracticeRows::row(3, rows), 0U);
    EXPECT_EQ(PracticeRows::row(4, rows), 1U);
    EXPECT_EQ(PracticeRows::row(11, rows), std::nullopt);
}

TEST(PracticeRequest, TakesTheLettersOfTheLastRequest) {
    const struct {
        const char* text;
        Letters letters;
    } cases[] = {
        {"Try these.\nPractise: **e**, t, n\nGood luck!", {"e", "t", "n"}},
        {"Practise: th, e", {"e"}},
        {"practise: E, e", {"e"}},
        {"Practise: q\n  PRACTISE: x\r\n\n", {"x"}},
        {"Practise: q\nPractise:\n", {}},
        {"Practise: Ж `é` 'ß'., 5, -", {"ж", "é", "ß"}},
        {"I practise: e", {}},
        {"practise e", {}},
        {"practise: a: b", {"b"}},
        {"", {}},
    };
    for (const auto& [text, letters] : cases) EXPECT_EQ(PracticeRequest::letters(text), letters) << text;
}

}  // namespace
}  // namespace tapcore
