#pragma once

#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/settings/document.h"

namespace ostrel {

// A long list, kept as one JSON array under one key, that grows at its end and is shortened at its
// beginning. What was printed for the last save is kept, so that a save costs little more than the
// writing of the bytes.
template <class T>
class ListDocument {
  public:
    using OnEncodingFailure = DocumentBytes::OnEncodingFailure;

    ListDocument(PreferencesStore& preferences, std::string_view key, OnEncodingFailure onFailure)
        : document_(preferences, key, onFailure) {}

    [[nodiscard]] std::optional<std::vector<T>> load() { return document_.load(); }

    // The list is the one of the last save, without its first `dropped` entries and with others
    // after its last.
    void saveGrown(const std::vector<T>& list, std::size_t dropped) {
        if (lengths_.size() < dropped || lengths_.size() - dropped > list.size()) {
            forget();
        } else {
            dropFirst(dropped);
        }
        for (std::size_t i = lengths_.size(); i < list.size(); ++i) {
            const JsonText printed = printJson(list[i]);
            if (!printed.text) {
                forget();
                document_.bytes().writeFailed(printed.error);
                return;
            }
            lengths_.push_back(printed.text->size() + 1);
            text_ += *printed.text;
            text_ += ',';
        }
        writeText();
    }

    // Any list.
    void save(const std::vector<T>& list) {
        forget();
        saveGrown(list, 0);
    }

  private:
    void forget() {
        lengths_.clear();
        text_ = '[';
    }

    void dropFirst(std::size_t count) {
        const auto end = lengths_.begin() + static_cast<std::ptrdiff_t>(count);
        text_.erase(1, std::accumulate(lengths_.begin(), end, std::size_t{0}));
        lengths_.erase(lengths_.begin(), end);
    }

    void writeText() {
        if (lengths_.empty()) {
            document_.bytes().write("[]");
            return;
        }
        text_.back() = ']';
        document_.bytes().write(text_);
        text_.back() = ',';
    }

    Document<std::vector<T>> document_;
    std::string text_ = "[";            // each entry is followed by a comma
    std::vector<std::size_t> lengths_;  // of each entry, with its comma
};

}  // namespace ostrel
