#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

class QWidget;

namespace ostrel {

class MotionSettings;
class SettingsStore;

// Shows what a break looks like, on all displays for two seconds. There is no break: nothing counts
// or records it, and it holds neither keyboard nor pointer. Any key that reaches the program ends
// it, and so does a click.
class SampleBreak : public QObject {
  public:
    static constexpr int kLengthSec = 2;

    // Both outlive it.
    SampleBreak(const SettingsStore& settingsStore, const MotionSettings& motion);
    ~SampleBreak() override;

    // One that is on the screen begins anew.
    void show();
    void end();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Surface;
    // In the next turn of the loop: the click that ends it may be on one of its buttons.
    struct Retire {
        void operator()(Surface* surface) const;
    };

    void countDown();

    const SettingsStore& settingsStore_;
    const MotionSettings& motion_;
    std::vector<std::unique_ptr<Surface, Retire>> surfaces_;
    int remainingSec_ = 0;
    QTimer second_;
};

}  // namespace ostrel
