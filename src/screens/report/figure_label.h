#pragma once

#include <QWidget>

class QLabel;

namespace ostrel {

// A figure of the report. A screen reader hears what it is a figure of together with it.
class FigureLabel : public QWidget {
  public:
    enum class Form {
        row,   // the value alone: its name stands at the other end of the row
        tile,  // large, with its name below
    };

    FigureLabel(const QString& name, Form form);

    void show(const QString& value);

  private:
    QString name_;
    QLabel* value_;
};

}  // namespace ostrel
