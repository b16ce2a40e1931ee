#include "platform/linux/posted_notifications.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ostrel {

PostedNotifications::PostedNotifications(NotificationServer& server) : server_(server) {
    subscriptions_.push_back(server.found.subscribe([this] { goOnWithAll(); }));
    subscriptions_.push_back(server.notFound.subscribe([this] { dropWhatCannotWait(); }));
    subscriptions_.push_back(server.gone.subscribe([this] { startAnew(); }));
    subscriptions_.push_back(server.actionInvoked.subscribe(
        [this](Number number, const QString& action) { respond(number, action); }));
    subscriptions_.push_back(
        server.closed.subscribe([this](Number number) { markClosed(number); }));
}

void PostedNotifications::post(const std::string& id, Posting posting) {
    const auto entry = entries_.try_emplace(id).first;
    entry->second.next = std::move(posting);
    entry->second.isWithdrawn = false;
    goOn(entry);
}

void PostedNotifications::withdraw(const std::string& id) {
    const auto found = entries_.find(id);
    if (found == entries_.end()) {
        return;
    }
    Entry& entry = found->second;
    if (entry.sent) {
        entry.isWithdrawn = true;
        return;
    }
    const Number open = entry.isOpen ? entry.number : 0;
    entries_.erase(found);
    if (open != 0) {
        server_.close(open);
    }
}

void PostedNotifications::forgetWaiting(const std::string& id) {
    const auto entry = entries_.find(id);
    if (entry != entries_.end() && !entry->second.sent) {
        entry->second.next.reset();
        eraseIfEmpty(entry);
    }
}

void PostedNotifications::goOn(Entries::iterator entry) {
    auto& [id, state] = *entry;
    if (state.sent || !state.next) {
        return;
    }
    if (!server_.isReady()) {
        server_.start();
        return;
    }
    state.sent = std::exchange(state.next, std::nullopt);
    server_.notify(state.sent->note, state.isOpen ? state.number : 0,
                   [this, id = id](Number number) { takeAnswer(id, number); });
}

void PostedNotifications::takeAnswer(const std::string& id, Number number) {
    const auto found = entries_.find(id);
    Entry& entry = found->second;
    if (number != 0) {
        entry.number = number;
        entry.isOpen = true;
        entry.shown = std::move(entry.sent);
    } else if (!server_.isReady() && !entry.next &&
               entry.sent->withoutServer == WithoutServer::wait) {
        entry.next = std::move(entry.sent);
    }
    entry.sent.reset();
    if (std::exchange(entry.isWithdrawn, false)) {
        withdraw(id);
    } else if (entry.next) {
        goOn(found);
    } else {
        eraseIfEmpty(found);
    }
}

void PostedNotifications::goOnWithAll() {
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        goOn(entry);
    }
}

void PostedNotifications::dropWhatCannotWait() {
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto current = entry++;
        Entry& state = current->second;
        if (!state.sent && state.next && state.next->withoutServer == WithoutServer::drop) {
            state.next.reset();
        }
        eraseIfEmpty(current);
    }
}

void PostedNotifications::startAnew() {
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto current = entry++;
        current->second.forgetShown();
        eraseIfEmpty(current);
    }
}

void PostedNotifications::respond(Number number, const QString& action) {
    const auto found = find(number);
    if (found == entries_.end()) {
        return;
    }
    Entry& entry = found->second;
    const auto& offered = entry.shown->note.actions;
    if (std::none_of(offered.begin(), offered.end(),
                     [&](const NotificationServer::Action& one) { return one.id == action; })) {
        return;
    }
    NotificationResponse response = entry.shown->tap;
    if (action != NotificationServer::kTap) {
        response.action = action.toStdString();
    }
    // One that is being replaced stays: what takes its place has not been answered.
    if (entry.isOpen && !entry.sent) {
        server_.close(number);
    }
    entry.forgetShown();
    eraseIfEmpty(found);
    responded.send(response);
}

void PostedNotifications::markClosed(Number number) {
    const auto found = find(number);
    if (found != entries_.end()) {
        found->second.isOpen = false;
    }
}

PostedNotifications::Entries::iterator PostedNotifications::find(Number number) {
    return std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
        return entry.second.shown && entry.second.number == number;
    });
}

void PostedNotifications::eraseIfEmpty(Entries::iterator entry) {
    const Entry& state = entry->second;
    if (!state.shown && !state.sent && !state.next) {
        entries_.erase(entry);
    }
}

void PostedNotifications::Entry::forgetShown() {
    number = 0;
    isOpen = false;
    shown.reset();
}

}  // namespace ostrel
