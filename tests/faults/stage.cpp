// Plays a keyboard to recorders that others start. Prints the folder that they need to know as UMOCKDEV_DIR,
// then does what it is told line by line ("plug 5", "tap 5 30", "unplug 5": the device's number, the key),
// each with an answer.

#include <cstdlib>
#include <iostream>
#include <string>

#include "tests/app/recorder_live/testbed.h"

int main() {
    tappora::Testbed bed;
    std::cout << std::getenv("UMOCKDEV_DIR") << std::endl;
    std::string what;
    for (int number = 0, key = 0; std::cin >> what >> number;) {
        const tappora::MockDevice keyboard{.number = number, .name = "A keyboard"};
        if (what == "plug") bed.plug(keyboard);
        if (what == "unplug") bed.unplug(keyboard);
        if (what == "tap" && std::cin >> key) bed.tap(keyboard, key);
        std::cout << "done" << std::endl;
    }
}
