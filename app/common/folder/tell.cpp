#include "app/common/folder/tell.h"

#include <exception>
#include <memory>
#include <utility>

#include "app/common/harmless_text.h"

namespace tappora {

void complainOf(const tapcore::Written& written, const Tell& tell) {
    if (!written.isSafe())
        tell(harmlessLine(written.path.string() + ": " + written.error.message() +
                          "; the new text is written, but a power cut may undo it"));
}

tapcore::WriteTold complainOnce(const Tell& tell) {
    return [tell, wasTold = std::make_shared<bool>(false)](const tapcore::Written& unsafe) {
        if (!std::exchange(*wasTold, true)) complainOf(unsafe, tell);
    };
}

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
