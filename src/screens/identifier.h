#pragma once

class QString;
class QWidget;

namespace ostrel {

// Names a widget for tests, style sheets and, where the toolkit can tell it to them, for the
// programs that read the screen.
void identify(QWidget* widget, const QString& name);

}  // namespace ostrel
