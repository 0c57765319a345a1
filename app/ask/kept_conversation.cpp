#include "app/ask/kept_conversation.h"

#include "app/common/system/environment.h"

namespace tappora {

void KeptConversation::add(const std::string& question, const Answer& answer) const {
    const LockedStore locked(folder_, environment_);
    const tapcore::Store& own = locked.store;
    tapcore::ChatFile chat = own.readChat();
    chat.turns.push_back({tapcore::ChatFile::Role::user, question, {}});
    chat.turns.push_back({tapcore::ChatFile::Role::assistant, answer.text, answer.read});
    own.writeChat(chat);
}

tapcore::ChatFile KeptConversation::read() const {
    return LockedStore(folder_, environment_).store.readChat();
}

void KeptConversation::archive() const {
    const LockedStore own(folder_, environment_);
    const Environment current = atThisMoment(environment_);
    own.store.shelveChat(current.now, current.calendar);
}

}  // namespace tappora
