#include "screens/report/figure_label.h"

#include <QLabel>
#include <QVBoxLayout>

#include "screens/controls/page.h"
#include "screens/texts/texts.h"

namespace ostrel {

FigureLabel::FigureLabel(const QString& name, Form form)
    : name_(name), value_(makeLabel({}, form == Form::tile ? "figure" : "text")) {
    value_->setWordWrap(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(value_);
    if (form == Form::tile) {
        layout->addWidget(makeLabel(name, "hint"));
        layout->addStretch();
    } else {
        QFont bold = value_->font();
        bold.setWeight(QFont::DemiBold);
        value_->setFont(bold);
    }
}

void FigureLabel::show(const QString& value) {
    value_->setText(value);
    value_->setAccessibleName(Texts::of("report.figure.spoken %@ %@", {name_, value}));
}

}  // namespace ostrel
