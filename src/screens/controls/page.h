#pragma once

#include <QFrame>
#include <QScrollArea>
#include <QString>
#include <string_view>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace ostrel {

// A label in one of the styles of WindowLook; long ones wrap.
[[nodiscard]] QLabel* makeLabel(const QString& text, const char* look = "text");

// A button with the text of `key`, named for tests and screen readers.
[[nodiscard]] QPushButton* makeButton(std::string_view key, const QString& name);

// A group of rows on a card: each a label, a hint under it if there is one, and its control at the
// other end, which a screen reader knows by the label.
class Card : public QFrame {
  public:
    explicit Card(QWidget* parent = nullptr);

    // Takes the control over. The row is returned, for hiding it and the like.
    QWidget* addRow(const QString& label, const QString& hint, QWidget* control);

    // One with a label of its own in the place of the hint; null for none.
    QWidget* addRow(const QString& label, QLabel* hint, QWidget* control);

    // One that needs the whole width.
    QWidget* addWide(QWidget* content);

  private:
    QFrame* makeRow();

    QVBoxLayout* rows_;
};

// A page of a window that scrolls when it is too long: a title, then groups under headings.
class Page : public QScrollArea {
  public:
    explicit Page(const QString& title, QWidget* parent = nullptr);

    // An empty heading is left out.
    Card* addCard(const QString& heading);
    void addText(const QString& text);
    // Over the whole width, unless it is aligned.
    void addWidget(QWidget* widget, Qt::Alignment alignment = {});

  private:
    QVBoxLayout* content_;
};

}  // namespace ostrel
