#include "core/settings/document.h"

namespace ostrel {

DocumentBytes::DocumentBytes(PreferencesStore& preferences, std::string_view key,
                             OnEncodingFailure onFailure)
    : preferences_(preferences), key_(key), onFailure_(onFailure) {}

std::optional<Json> DocumentBytes::read() {
    const std::optional<std::string> bytes = preferences_.read(key_);
    if (!bytes) {
        return std::nullopt;
    }
    std::optional<Json> json = parseJson(*bytes);
    if (!json) {
        unreadable_ = true;
    }
    return json;
}

bool DocumentBytes::write(std::string_view text) {
    if (const auto fault = preferences_.encodingFault()) {
        writeFailed(*fault);
        return false;
    }
    if (std::exchange(unreadable_, false)) {
        preferences_.setAside(key_);
    }
    preferences_.write(key_, text);
    return true;
}

void DocumentBytes::writeFailed(const std::string& why) {
    if (onFailure_ == OnEncodingFailure::post) {
        preferences_.persistenceWriteFailed.send({PersistenceError::Kind::encodeFailed, key_, why});
    }
}

void DocumentBytes::remove() {
    if (std::exchange(unreadable_, false)) {
        preferences_.setAside(key_);
    } else {
        preferences_.remove(key_);
    }
}

}  // namespace ostrel
