#include "app/common/folder/attempt.h"

#include <exception>
#include <utility>

namespace tappora {

Attempt::Attempt(Tell tell, std::string what) : tell_(std::move(tell)), what_(std::move(what)) {}

bool Attempt::run(const std::function<void()>& act) {
    try {
        act();
        problem_.clear();
        return true;
    } catch (const std::exception& error) {
        const std::string problem = what_ + error.what();
        if (problem != problem_) tell_(problem);
        problem_ = problem;
        return false;
    }
}

}  // namespace tappora
