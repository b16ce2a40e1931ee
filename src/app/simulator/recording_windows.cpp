#include "app/simulator/recording_windows.h"

#include <algorithm>

namespace ostrel {

class RecordingWindows::Recording : public OverlayWindow {
  public:
    Recording(RecordingWindows& owner, OverlayManager& manager, const ScreenSnapshot& screen,
              Role role)
        : owner_(owner), manager_(manager), window_{screen.displayID, role, screen.frame} {
        owner_.windows_.push_back(this);
        ++owner_.made_;
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() override { std::erase(owner_.windows_, this); }

    [[nodiscard]] std::uint32_t displayID() const override { return window_.displayID; }
    [[nodiscard]] Role role() const override { return window_.role; }
    void cover(const ScreenSnapshot& screen, Role role) override {
        window_.frame = screen.frame;
        window_.role = role;
    }
    void takeKeyboard() override { window_.hasKeyboard = true; }
    void releaseKeyboard() override { window_.hasKeyboard = false; }
    void fadeOut(double /*seconds*/) override {
        window_.isFading = true;
        window_.hasKeyboard = false;
    }

    void paint() { manager_.didPaint(*this); }
    [[nodiscard]] const Window& window() const { return window_; }

  private:
    RecordingWindows& owner_;
    OverlayManager& manager_;
    Window window_;
};

std::unique_ptr<OverlayWindow> RecordingWindows::make(OverlayManager& manager,
                                                      BreakLogEntry::Kind /*kind*/,
                                                      const ScreenSnapshot& screen, Role role) {
    auto window = std::make_unique<Recording>(*this, manager, screen, role);
    if (painting_ == Painting::atOnce) {
        window->paint();
    }
    return window;
}

std::vector<RecordingWindows::Window> RecordingWindows::onScreen() const {
    std::vector<Window> windows;
    for (const Recording* recording : windows_) {
        windows.push_back(recording->window());
    }
    return windows;
}

void RecordingWindows::paint(std::uint32_t displayID) {
    const auto found =
        std::find_if(windows_.begin(), windows_.end(),
                     [displayID](Recording* window) { return window->displayID() == displayID; });
    if (found != windows_.end()) {
        (*found)->paint();
    }
}

}  // namespace ostrel
