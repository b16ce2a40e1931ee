#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QTimer>
#include <cmath>

#include "screens/settings/bound_controls.h"
#include "screens/settings/overlay_preview.h"
#include "screens/settings/pages.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using S = SettingsModel;

constexpr int kPercent = 100;

QWidget* makeDim(SettingsStore& store) {
    auto* control = new QSlider(Qt::Horizontal);
    Bound::setName(control, "overlayDimOpacity");
    Bound::ignoreWheel(control);
    constexpr auto kRange = SettingsRanges::kOverlayDimPercent;
    control->setRange(static_cast<int>(kRange.least), static_cast<int>(kRange.most));
    control->setFixedWidth(220);
    auto* soon = new Bound::Soon(control);
    Bound::follow(soon, store, [control, soon](const SettingsModel& settings) {
        if (!soon->isPending()) {
            const QSignalBlocker quiet(control);
            control->setValue(static_cast<int>(std::lround(settings.overlayDimOpacity * kPercent)));
        }
    });
    QObject::connect(control, &QSlider::valueChanged, control, [&store, soon](int percent) {
        soon->run([&store, percent] {
            store.update([percent](S& settings) {
                settings.overlayDimOpacity = static_cast<double>(percent) / kPercent;
            });
        });
    });
    return control;
}

Choice* makePresentation(SettingsStore& store, BreakPresentation S::*field, const char* name) {
    return Bound::makeChoice(
        store, field,
        {{BreakPresentation::fullScreen, Texts::of("settings.breaks.presentation.full_screen")},
         {BreakPresentation::gentle, Texts::of("settings.breaks.presentation.gentle")}},
        name);
}

std::vector<std::string> linesOf(const QString& text) {
    std::vector<std::string> lines;
    for (const QString& line : text.split(u'\n')) {
        if (const QString words = line.trimmed(); !words.isEmpty()) {
            lines.push_back(words.toStdString());
        }
    }
    return lines;
}

QWidget* makeMessages(SettingsStore& store) {
    constexpr int kHeight = 92;
    auto* control = new QPlainTextEdit;
    Bound::setName(control, "customBreakMessages");
    control->setAccessibleName(Texts::of("settings.breaks.messages"));
    control->setAccessibleDescription(Texts::of("settings.breaks.messages.hint"));
    control->setTabChangesFocus(true);
    control->setFixedHeight(kHeight);
    auto* soon = new Bound::Soon(control);
    // While one types, what stands there is the record already, but for empty lines.
    Bound::follow(soon, store, [control, soon](const SettingsModel& settings) {
        if (soon->isPending() || linesOf(control->toPlainText()) == settings.customBreakMessages) {
            return;
        }
        QStringList lines;
        for (const std::string& line : settings.customBreakMessages) {
            lines << QString::fromStdString(line);
        }
        const QSignalBlocker quiet(control);
        control->setPlainText(lines.join(u'\n'));
    });
    QObject::connect(control, &QPlainTextEdit::textChanged, control, [&store, control, soon] {
        soon->run([&store, lines = linesOf(control->toPlainText())] {
            store.update([&lines](S& settings) { settings.customBreakMessages = lines; });
        });
    });
    return control;
}

QPushButton* makePlay(const SettingsServices& services) {
    constexpr int kBetweenMs = 1600;
    auto* button = new QPushButton(Texts::of("settings.breaks.chime.play"));
    Bound::setName(button, "chime.play");
    button->setAccessibleDescription(Texts::of("settings.breaks.chime.play.hint"));
    QObject::connect(button, &QPushButton::clicked, button, [&services, button] {
        using Chime = SettingsServices::Chime;
        services.playChime(Chime::start);
        QTimer::singleShot(kBetweenMs, button, [&services] { services.playChime(Chime::end); });
    });
    return button;
}

void addLook(Page& page, SettingsStore& store) {
    Card* look = page.addCard(Texts::of("settings.breaks.look"));
    look->addWide(new OverlayPreview(store));
    look->addRow(
        Texts::of("settings.breaks.style"), {},
        Bound::makeChoice(store, &S::overlayStyle,
                          {{OverlayStyle::guided, Texts::of("settings.breaks.style.guided")},
                           {OverlayStyle::minimal, Texts::of("settings.breaks.style.minimal")}},
                          "overlayStyle"));
    look->addRow(Texts::of("settings.breaks.tint"), {},
                 Bound::makeChoice(store, &S::overlayTint,
                                   {{OverlayTint::ink, Texts::of("settings.breaks.tint.ink")},
                                    {OverlayTint::black, Texts::of("settings.breaks.tint.black")},
                                    {OverlayTint::navy, Texts::of("settings.breaks.tint.navy")},
                                    {OverlayTint::sage, Texts::of("settings.breaks.tint.sage")}},
                                   "overlayTint"));
    look->addRow(Texts::of("settings.breaks.dim"), {}, makeDim(store));
    look->addRow(Texts::of("settings.breaks.eye_presentation"), {},
                 makePresentation(store, &S::eyePresentation, "eyePresentation"));
    look->addRow(Texts::of("settings.breaks.body_presentation"), {},
                 makePresentation(store, &S::bodyPresentation, "bodyPresentation"));
}

void addSound(Page& page, const SettingsServices& services) {
    using C = SettingsModel::ChimeMode;
    Card* sound = page.addCard(Texts::of("settings.breaks.sound"));
    sound->addRow(Texts::of("settings.breaks.chime"), {},
                  Bound::makeChoice(services.settingsStore, &S::chimeMode,
                                    {{C::off, Texts::of("settings.breaks.chime.off")},
                                     {C::start, Texts::of("settings.breaks.chime.start")},
                                     {C::end, Texts::of("settings.breaks.chime.end")},
                                     {C::both, Texts::of("settings.breaks.chime.both")}},
                                    "chimeMode"));
    sound->addRow(Texts::of("settings.breaks.chime.listen"), {}, makePlay(services));
}

}  // namespace

Page* makeBreaksPage(const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    auto* page = new Page(Texts::of("settings.page.breaks"));
    addLook(*page, store);
    Card* messages = page->addCard(Texts::of("settings.breaks.messages"));
    messages->addWide(makeMessages(store));
    page->addText(Texts::of("settings.breaks.messages.hint"));
    addSound(*page, services);
    Card* discipline = page->addCard(Texts::of("settings.breaks.discipline"));
    discipline->addRow(Texts::of("settings.breaks.strict"),
                       Texts::of("settings.breaks.strict.hint"),
                       Bound::makeSwitch(store, &S::strictMode, "strictMode"));
    discipline->addRow(Texts::of("settings.breaks.penalties"),
                       Texts::of("settings.breaks.penalties.hint"),
                       Bound::makeSwitch(store, &S::disableSkipPenalty, "disableSkipPenalty",
                                         Bound::Sense::inverted));
    return page;
}

}  // namespace ostrel
