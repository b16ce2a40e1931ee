#include "platform/virtual/memory_preferences.h"

namespace ostrel {

std::optional<std::string> MemoryPreferences::read(std::string_view key) const {
    const auto found = contents_.find(key);
    return found == contents_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryPreferences::write(std::string_view key, std::string_view bytes) {
    const auto [entry, isNew] = contents_.try_emplace(std::string(key), bytes);
    if (isNew || entry->second != bytes) {
        entry->second = bytes;
        written.send(entry->first);
    }
}

void MemoryPreferences::remove(std::string_view key) {
    const auto found = contents_.find(key);
    if (found != contents_.end()) {
        contents_.erase(found);
        removed.send(std::string(key));
    }
}

std::vector<std::string> MemoryPreferences::keys() const {
    std::vector<std::string> keys;
    for (const auto& [key, bytes] : contents_) {
        keys.push_back(key);
    }
    return keys;
}

// Not told as a removal: nothing of it is lost.
void MemoryPreferences::setAside(std::string_view key) {
    const auto found = contents_.find(key);
    if (found != contents_.end()) {
        damaged_.emplace(found->first, found->second);
        contents_.erase(found);
    }
}

std::optional<std::string> MemoryPreferences::encodingFault() const {
    return encoding_ == Encoding::fails ? std::optional<std::string>("encoding was made to fail")
                                        : std::nullopt;
}

}  // namespace ostrel
