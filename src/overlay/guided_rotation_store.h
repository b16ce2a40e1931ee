#pragma once

#include <cstdint>
#include <tuple>

#include "core/settings/document.h"
#include "overlay/active_overlay_session.h"

namespace ostrel {

// Where in the guided moves and in the user's messages the next break begins, kept under
// "ostrel.guidedRotation.v1", so that one break does not repeat the one before.
class GuidedRotationStore {
  public:
    // Counters go round before they get here.
    static constexpr std::int64_t kCounterEnd = 1'000'000;

    struct Snapshot {
        std::int64_t eye = 0;
        std::int64_t body = 0;
        std::int64_t message = 0;

        static constexpr auto fields() {
            return std::tuple{Field{"eye", &Snapshot::eye}, Field{"body", &Snapshot::body},
                              Field{"message", &Snapshot::message}};
        }
        bool operator==(const Snapshot&) const = default;
    };

    explicit GuidedRotationStore(PreferencesStore& preferences);

    [[nodiscard]] std::int64_t startIndex(BreakLogEntry::Kind kind) const;

    // The message counter of this break, 0 or more; the next break has the next one.
    std::int64_t nextMessageIndex();

    void advance(BreakLogEntry::Kind kind, std::int64_t count);

    // How many moves a break that ends now has shown: an eye break one, a body break one for each
    // minute begun, and one for a whole minute that is just over.
    [[nodiscard]] static std::int64_t movesCovered(const ActiveOverlaySession& session);

  private:
    Document<Snapshot> document_;
    Snapshot snapshot_;
};

}  // namespace ostrel
