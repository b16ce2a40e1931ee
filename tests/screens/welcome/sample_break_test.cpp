#include "screens/welcome/sample_break.h"

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPushButton>

#include "core/settings/settings_store.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_devices.h"
#include "screens/gui.h"

namespace ostrel {

struct SampleBreakTest : ::testing::Test {
    SampleBreakTest() {
        motion.setReduceMotion(true);
        beneath.show();
    }
    ~SampleBreakTest() override {
        sample.end();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::vector<QWidget*> surfaces() {
        std::vector<QWidget*> found;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget != &beneath && widget->isVisible()) {
                found.push_back(widget);
            }
        }
        return found;
    }
    QWidget* surface() { return surfaces().empty() ? nullptr : surfaces().front(); }

    // What has the keyboard meanwhile.
    struct Beneath : QWidget {
        void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
        std::vector<int> keys;
    } beneath;
    MemoryPreferences preferences;
    SettingsStore store{preferences};
    VirtualMotionSettings motion;
    SampleBreak sample{store, motion};
};

TEST_F(SampleBreakTest, CoversTheDisplayAndGoesByItself) {
    sample.show();
    ASSERT_NE(surface(), nullptr);
    EXPECT_EQ(surface()->size(), surface()->screen()->size());
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_TRUE(runUntil([this] { return surface() == nullptr; }));
    EXPECT_GT(elapsed.elapsed(), 1500);
    EXPECT_LT(elapsed.elapsed(), 5000);
}

TEST_F(SampleBreakTest, EndsAtAnyKeyWhichDoesNothingBeneath) {
    for (const int key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_A}) {
        sample.show();
        sendKey(beneath, key, Repeat::automatic);
        EXPECT_NE(surface(), nullptr) << "still down from before";
        sendKey(beneath, key);
        EXPECT_EQ(surface(), nullptr);
        EXPECT_TRUE(beneath.keys.empty());
    }
    sendKey(beneath, Qt::Key_A);
    EXPECT_EQ(beneath.keys, std::vector<int>{Qt::Key_A}) << "and afterwards all is as before";
}

TEST_F(SampleBreakTest, EndsAtAClickAnywhere) {
    const auto clickOn = [](QWidget& widget) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &press);
    };
    sample.show();
    clickOn(*surface());
    EXPECT_EQ(surface(), nullptr);

    sample.show();
    surface()->findChild<QPushButton*>()->click();
    EXPECT_EQ(surface(), nullptr);
}

TEST_F(SampleBreakTest, TakesNeitherKeyboardNorPointer) {
    sample.show();
    EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    EXPECT_TRUE(surface()->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(SampleBreakTest, ShownTwiceIsOne) {
    sample.show();
    sample.show();
    EXPECT_EQ(surfaces().size(), 1U);
}

}  // namespace ostrel
