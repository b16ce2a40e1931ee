#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <cstdint>
#include <functional>

#include "core/settings/settings_model.h"
#include "screens/settings/settings_services.h"

class QLabel;
class QSlider;

namespace ostrel {

class Card;

// The four timing values as sliders. One that is let go makes all four the user's own.
class TimingSliders : public QObject {
  public:
    // Adds its rows to the card. The services outlive it.
    TimingSliders(const SettingsServices& services, Card& card, QObject* parent);

    // Tells now, and shortly after each change, of the settings as the sliders stand.
    void onChange(std::function<void(const SettingsModel&)> tell);

  private:
    struct Row {
        QSlider* slider = nullptr;
        QLabel* label = nullptr;
        std::int64_t valueSec = 0;  // may lie outside the slider's range until it is moved
    };

    void addRow(Card& card, std::size_t index);
    void move(std::size_t index, int position);
    void letGo();
    void show(const SettingsModel& settings);
    void setValue(Row& row, std::int64_t valueSec);
    [[nodiscard]] SettingsModel asTheyStand() const;

    const SettingsServices& services_;
    std::array<Row, 4> rows_;
    std::function<void(const SettingsModel&)> tell_;
    QTimer telling_;
};

}  // namespace ostrel
