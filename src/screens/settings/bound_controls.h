#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "core/settings/settings_store.h"
#include "screens/controls/fields.h"
#include "screens/controls/switch.h"

class QAbstractSlider;

// Controls that show a field of the settings, whoever changes it, and change it at once. Each is
// named "ostrel.settings." and the field's name.
namespace ostrel::Bound {

// Calls it now and after each change of the settings, until the owner is gone.
void follow(QObject* owner, const SettingsStore& store,
            std::function<void(const SettingsModel&)> show);

void setName(QWidget* control, const char* field);

// Turning the wheel over a page scrolls it; it must not change what happens to be under the
// pointer.
void ignoreWheel(QWidget* control);

// "20 min", "45 s", "1 min 30 s".
[[nodiscard]] QString secondsText(std::int64_t seconds);

// Does what is asked last, a few times a second at most: each change of the settings is written to
// the disk. What is still to be done when this goes is done then. A control that is changed in this
// way follows the settings with this as the owner.
class Soon : public QObject {
  public:
    explicit Soon(QObject* parent);
    ~Soon() override;

    void run(std::function<void()> act);
    [[nodiscard]] bool isPending() const { return act_ != nullptr; }

  private:
    void work();

    std::function<void()> act_;
    QTimer timer_;
};

enum class Sense { straight, inverted };
[[nodiscard]] Switch* makeSwitch(SettingsStore& store, bool SettingsModel::*field, const char* name,
                                 Sense sense = Sense::straight);

// One of a list. `shown` answers the index of what the settings say.
[[nodiscard]] Choice* makeList(SettingsStore& store, const QStringList& labels,
                               std::function<int(const SettingsModel&)> shown,
                               std::function<void(SettingsModel&, int)> choose, const char* name);

template <class T>
[[nodiscard]] Choice* makeChoice(SettingsStore& store, T SettingsModel::*field,
                                 std::vector<std::pair<T, QString>> choices, const char* name) {
    QStringList labels;
    for (const auto& choice : choices) {
        labels << choice.second;
    }
    return makeList(
        store, labels,
        [field, choices](const SettingsModel& settings) {
            const auto found =
                std::ranges::find(choices, settings.*field, &std::pair<T, QString>::first);
            return static_cast<int>(found - choices.begin());
        },
        [field, choices](SettingsModel& settings, int index) {
            settings.*field = choices[static_cast<std::size_t>(index)].first;
        },
        name);
}

// A stored value that is none of the choices stands in the list as well.
[[nodiscard]] Choice* makeSecondsChoice(SettingsStore& store, std::int64_t SettingsModel::*field,
                                        std::span<const std::int64_t> choices, const char* name);

}  // namespace ostrel::Bound
