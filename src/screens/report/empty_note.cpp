#include "screens/report/empty_note.h"

#include <QLabel>
#include <QVBoxLayout>

#include "screens/controls/page.h"
#include "screens/identifier.h"

namespace ostrel {
namespace {

constexpr int kAbove = 120;
constexpr int kBetween = 6;

}  // namespace

EmptyNote::EmptyNote() : title_(makeLabel({}, "title")), text_(makeLabel({})) {
    identify(this, QStringLiteral("ostrel.report.empty"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, kAbove, 0, kAbove);
    layout->setSpacing(kBetween);
    for (QLabel* label : {title_, text_}) {
        label->setAlignment(Qt::AlignHCenter);
        layout->addWidget(label);
    }
}

void EmptyNote::show(const QString& title, const QString& text) {
    title_->setText(title);
    text_->setText(text);
}

}  // namespace ostrel
