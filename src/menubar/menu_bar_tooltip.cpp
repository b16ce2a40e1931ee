#include "menubar/menu_bar_tooltip.h"

namespace ostrel {

std::vector<LocalizedText> menuBarTooltip(const MenuBarFormatter::Context& context) {
    using MenuBarFormatter::countdownText;
    if (!context.isEnabled) {
        return {{"menubar.tooltip.off", {}}};
    }
    return {{"menubar.tooltip.default", {}},
            {"menubar.status.next_eye %@", {countdownText(context.state.eye.remainingSec)}},
            {"menubar.status.next_body %@", {countdownText(context.state.body.remainingSec)}}};
}

}  // namespace ostrel
