#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/signal.h"

namespace ostrel {

// Why a record could not be kept; what was in memory goes on being used.
struct PersistenceError {
    enum class Kind { encodeFailed, writeFailed };

    Kind kind = Kind::encodeFailed;
    std::string key;
    std::string description;
};

// The user's preferences: bytes by key. Nothing here fails towards its caller.
class PreferencesStore {
  public:
    virtual ~PreferencesStore() = default;

    // Absent when there is nothing under the key or it cannot be read. After a write that could not
    // reach the disk, what was to be written.
    [[nodiscard]] virtual std::optional<std::string> read(std::string_view key) const = 0;

    // Replaces the bytes under the key as a whole: a reader, also after a crash, finds the old ones
    // or the new ones.
    virtual void write(std::string_view key, std::string_view bytes) = 0;

    virtual void remove(std::string_view key) = 0;

    // Every key that has bytes, in no particular order.
    [[nodiscard]] virtual std::vector<std::string> keys() const = 0;

    // Moves the bytes under the key out of the way, where a person can still find them; the key is
    // empty then. Does nothing when it is.
    virtual void setAside(std::string_view key) = 0;

    // Why encoding cannot work at the moment, absent when it can. Only a store made for trying out
    // failures ever gives a reason.
    [[nodiscard]] virtual std::optional<std::string> encodingFault() const { return std::nullopt; }

    // The in-process notice "ostrel.persistenceWriteFailed". A store that keeps failing for the
    // same reason sends it once.
    Signal<const PersistenceError&> persistenceWriteFailed;
};

}  // namespace ostrel
