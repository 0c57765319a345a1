#include "app/ask/interruption.h"

#include <signal.h>

#include <initializer_list>

namespace tappora {
namespace {

// A signal handler can reach nothing but a variable like this.
volatile sig_atomic_t requested = 0;

void note(int) { requested = 1; }

/// Without SA_RESTART: what waits is to wake up.
void handle(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &action, nullptr);
}

}  // namespace

Interruption::Interruption() {
    requested = 0;
    handle(note);
}

Interruption::~Interruption() { handle(SIG_DFL); }

bool Interruption::isRequested() { return requested != 0; }

}  // namespace tappora
