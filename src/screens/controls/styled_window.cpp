#include "screens/controls/styled_window.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <utility>

#include "screens/controls/window_look.h"

namespace ostrel {

StyledWindow::StyledWindow(QSize size) {
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_StyledBackground);
    setObjectName(QStringLiteral("ostrel.window"));
    resize(size);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void StyledWindow::present() {
    if (content_ == nullptr) {
        rebuild();
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void StyledWindow::clear() {
    delete std::exchange(content_, nullptr);
}

void StyledWindow::rebuild() {
    adoptLook();
    const QString focus = focusWidget() ? focusWidget()->objectName() : QString();
    clear();
    content_ = makeContent();
    layout()->addWidget(content_);
    content_->show();
    auto* again = focus.isEmpty() ? nullptr : content_->findChild<QWidget*>(focus);
    if (again != nullptr) {
        again->setFocus();
    }
}

// A style sheet changes the palette of its widget: the one to follow is the application's.
void StyledWindow::adoptLook() {
    const QString sheet =
        WindowLook::styleSheet(QApplication::palette(), QApplication::layoutDirection());
    if (sheet != styleSheet()) {
        setStyleSheet(sheet);
    }
}

bool StyledWindow::event(QEvent* event) {
    if (content_ != nullptr && event->type() == QEvent::LanguageChange) {
        rebuild();
    } else if (event->type() == QEvent::ApplicationPaletteChange) {
        adoptLook();
    }
    return QWidget::event(event);
}

void StyledWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Close) || event->matches(QKeySequence::Cancel)) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace ostrel
