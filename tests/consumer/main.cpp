// A project of somebody else's that counts one press and reads a widget's size.
#include <cstdio>

#include "core/files/store.h"
#include "widgets/bundle.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    tapcore::Tally tally;
    tally.add(0, 9, 42);
    tapcore::DayFile day;
    day.merge(tally, 7, 0);
    std::fputs(day.text(tapcore::FileFormat::markdown, {2026, 9, 20}).c_str(), stdout);
    const tapcore::Store store(argv[1], tapcore::FileFormat::org);
    return store.hasData() || tapwidgets::bundle.empty() ? 1 : 0;
}
