#include <gtest/gtest.h>

#include <tuple>

#include "app/common/control/pause_time.h"
#include "app/common/control/protocol.h"
#include "app/common/program.h"
#include "app/common/system/moment.h"
#include "tests/support/message_of.h"

namespace tappora {
namespace {

using tapcore::Instant;
using tapcore::messageOf;
using Kind = ControlQuestion::Kind;

const tapcore::Calendar berlin("Europe/Berlin");
Instant at(const char* time) { return utcMoment(time).value(); }

TEST(PauseTime, TakesSpansAndTheNextTimeOnTheClock) {
    for (const auto& [words, now, end] :
         std::initializer_list<std::tuple<std::vector<std::string>, const char*, const char*>>{
             {{"30m"}, "2026-09-20T12:00:00Z", "2026-09-20T12:30:00Z"},
             {{"2h"}, "2026-10-24T23:30:00Z", "2026-10-25T01:30:00Z"},
             {{"44640m"}, "2026-09-20T12:00:00Z", "2026-10-21T12:00:00Z"},
             {{"until", "14:00"}, "2026-09-20T11:59:59Z", "2026-09-20T12:00:00Z"},
             {{"until", "14:00"}, "2026-09-20T12:00:00Z", "2026-09-21T12:00:00Z"},
             {{"until", "9:05"}, "2026-12-31T12:00:00Z", "2027-01-01T08:05:00Z"}})
        EXPECT_EQ(pauseEnd(words, at(now), berlin), at(end)) << words.back();
    EXPECT_EQ(pauseEnd({}, at("2026-09-20T12:00:00Z"), berlin), std::nullopt);
}

TEST(PauseTime, RefusesWhatIsNoTimeOrTooLong) {
    const std::string notATime = "not a time: ";
    const std::string use = "; use 30m, 2h or until 14:00";
    for (const auto& [words, message] :
         std::initializer_list<std::pair<std::vector<std::string>, std::string>>{
             {{"-5m"}, notATime + "-5m" + use},
             {{"+5m"}, notATime + "+5m" + use},
             {{"m"}, notATime + "m" + use},
             {{"1.5h"}, notATime + "1.5h" + use},
             {{"30"}, notATime + "30" + use},
             {{"10", "years"}, notATime + "10 years" + use},
             {{"until"}, notATime + "until" + use},
             {{"until", "24:00"}, notATime + "until 24:00" + use},
             {{"until", "14:0"}, notATime + "until 14:0" + use},
             {{"until", "14:00", "tomorrow"}, notATime + "until 14:00 tomorrow" + use},
             {{"until", "02:30"}, "no such time: clocks skip 02:30 on that day"},
             {{"0m"}, notATime + "0m" + use},
             {{"745h"}, "745h: a pause is 31 days at most; without a time it lasts until tappora resume"},
             {{"999999999h"},
              "999999999h: a pause is 31 days at most; without a time it lasts until tappora resume"}})
        EXPECT_EQ(messageOf<UsageError>([&] { return pauseEnd(words, at("2026-03-28T12:00:00Z"), berlin); }),
                  message);
}

TEST(ControlProtocol, ReadsWhatItWrote) {
    const Instant now = at("2026-09-20T12:00:00Z");
    const ControlQuestion pause{.kind = Kind::pause, .until = now};
    EXPECT_EQ(lineOf(pause), R"({"ask":"pause","until":"2026-09-20T12:00:00Z"})");
    for (const auto& question : {pause, ControlQuestion{.kind = Kind::resume}, ControlQuestion{}})
        EXPECT_EQ(readQuestion(lineOf(question)), question);
    const RecorderStatus full{.process = 7,
                              .folder = "/data",
                              .since = now,
                              .devices = {{{"A keyboard", true}}, {{"Another", "Permission denied", true}}},
                              .stored = RecorderStatus::Stored{now, 3, 4},
                              .unstored = RecorderStatus::Unstored{"full", "1 press"},
                              .dropped = RecorderStatus::Dropped{2, now},
                              .pause = Pause{now, now},
                              .pauseProblem = "no home",
                              .isLocked = true,
                              .lockProblem = "no bus"};
    for (const ControlAnswer& answer :
         {ControlAnswer{.status = full}, ControlAnswer{.status = RecorderStatus{}},
          ControlAnswer{.refusal = "no"}})
        EXPECT_EQ(readAnswer(lineOf(answer)), answer);
}

TEST(ControlProtocol, RefusesOtherLines) {
    for (const auto& [line, message] : std::initializer_list<std::pair<const char*, const char*>>{
             {"[]", "the document: not an object: []"},
             {R"({"ask":"stop"})", "ask: not status, pause or resume"},
             {R"({"ask":1})", "ask: not a string: 1"},
             {R"({"ask":"pause","until":"14:00"})", "until: not a time such as 2026-09-20T07:00:00Z"}})
        EXPECT_EQ(messageOf<tapcore::JsonError>([&] { return readQuestion(line); }), message);
}

}  // namespace
}  // namespace tappora
