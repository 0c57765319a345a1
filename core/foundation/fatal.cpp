#include "core/foundation/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace tapcore {
namespace {

// The chain of each thread. It is read only while the program ends.
thread_local const FatalContext* innermost = nullptr;

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

}  // namespace

FatalContext::FatalContext(std::string_view what, std::string_view subject)
    : what_(what), subject_(subject), outer_(innermost) {
    innermost = this;
}

FatalContext::~FatalContext() { innermost = outer_; }

void fatal(std::string_view message) {
    print("fatal: ");
    print(message);
    for (const FatalContext* context = innermost; context != nullptr; context = context->outer_) {
        print(", ");
        print(context->what_);
        print(" ");
        print(context->subject_);
    }
    print("\n");
    std::fflush(stderr);
    std::abort();
}

}  // namespace tapcore
