#pragma once

#include <QWidget>

class QLabel;

namespace ostrel {

// What stands in the place of a report that has nothing to tell: a kind word instead of noughts.
class EmptyNote : public QWidget {
  public:
    EmptyNote();

    void show(const QString& title, const QString& text);

  private:
    QLabel* title_;
    QLabel* text_;
};

}  // namespace ostrel
