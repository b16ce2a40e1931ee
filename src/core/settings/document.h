#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/settings/json_record.h"
#include "platform/api/preferences_store.h"

namespace ostrel {

// The bytes under one key of the preferences, and whether they may be written over.
class DocumentBytes {
  public:
    enum class OnEncodingFailure { post, stayQuiet };

    DocumentBytes(PreferencesStore& preferences, std::string_view key, OnEncodingFailure onFailure);

    [[nodiscard]] std::optional<Json> read();
    void markUnreadable() { unreadable_ = true; }
    // False, and told of, when encoding is made to fail.
    bool write(std::string_view text);
    void writeFailed(const std::string& why);
    void remove();

  private:
    PreferencesStore& preferences_;
    std::string key_;
    OnEncodingFailure onFailure_;
    bool unreadable_ = false;
};

// One record of type T, kept as one JSON document under one key.
//
// What cannot be read counts as absent. Its bytes stay as they are until the first save, which sets
// them aside before it writes: nobody loses a history to one bad byte.
template <class T>
class Document {
  public:
    using OnEncodingFailure = DocumentBytes::OnEncodingFailure;

    Document(PreferencesStore& preferences, std::string_view key,
             OnEncodingFailure onFailure = OnEncodingFailure::post)
        : bytes_(preferences, key, onFailure) {}

    [[nodiscard]] std::optional<T> load() {
        const std::optional<Json> json = bytes_.read();
        if (!json) {
            return std::nullopt;
        }
        std::optional<T> record = JsonCodec<T>::decode(*json);
        if (!record) {
            bytes_.markUnreadable();
        }
        return record;
    }

    // A record that cannot be encoded leaves the stored bytes untouched and, unless told to stay
    // quiet, posts persistenceWriteFailed.
    // Returns whether it could be encoded.
    bool save(const T& record) {
        const JsonText printed = printJson(record);
        if (!printed.text) {
            bytes_.writeFailed(printed.error);
            return false;
        }
        return bytes_.write(*printed.text);
    }

    void remove() { bytes_.remove(); }

    // For those who print the record themselves.
    [[nodiscard]] DocumentBytes& bytes() { return bytes_; }

  private:
    DocumentBytes bytes_;
};

}  // namespace ostrel
