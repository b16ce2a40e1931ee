#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>

namespace ostrel {

// Runs a share from 0 to 1 over some time, eased at its end, at about 30 steps a second.
class Fade {
  public:
    using Step = std::function<void(double share)>;

    Fade();
    Fade(const Fade&) = delete;
    Fade& operator=(const Fade&) = delete;

    // Calls `step` from the next turn of the loop on; with a share of 1 exactly once, at the end. A
    // run before it ends where it is.
    void run(double seconds, Step step);
    void stop();

  private:
    void advance();

    double seconds_ = 0;
    Step step_;
    QElapsedTimer elapsed_;
    QTimer timer_;
};

}  // namespace ostrel
