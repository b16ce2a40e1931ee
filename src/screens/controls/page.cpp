#include "screens/controls/page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/identifier.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr int kPageMargin = 28;
constexpr int kPageWidth = 620;
constexpr int kRowMargin = 14;

}  // namespace

QLabel* makeLabel(const QString& text, const char* look) {
    auto* label = new QLabel(text);
    label->setProperty("look", QString::fromLatin1(look));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QPushButton* makeButton(std::string_view key, const QString& name) {
    auto* button = new QPushButton(Texts::of(key));
    identify(button, name);
    return button;
}

Card::Card(QWidget* parent) : QFrame(parent), rows_(new QVBoxLayout(this)) {
    setProperty("look", QStringLiteral("card"));
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
}

QFrame* Card::makeRow() {
    auto* row = new QFrame;
    row->setProperty("look", QLatin1String(rows_->isEmpty() ? "first-row" : "row"));
    rows_->addWidget(row);
    return row;
}

QWidget* Card::addRow(const QString& label, const QString& hint, QWidget* control) {
    return addRow(label, hint.isEmpty() ? nullptr : makeLabel(hint, "hint"), control);
}

QWidget* Card::addRow(const QString& label, QLabel* hint, QWidget* control) {
    QFrame* row = makeRow();
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(kRowMargin, 10, kRowMargin, 10);
    layout->setSpacing(kRowMargin);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    QLabel* name = makeLabel(label);
    name->setBuddy(control);
    words->addWidget(name);
    if (hint != nullptr) {
        words->addWidget(hint);
    }
    layout->addLayout(words, 1);
    layout->addWidget(control, 0, Qt::AlignVCenter);
    if (control->accessibleName().isEmpty()) {
        control->setAccessibleName(label);
    }
    if (hint != nullptr && control->accessibleDescription().isEmpty()) {
        control->setAccessibleDescription(hint->text());
    }
    return row;
}

QWidget* Card::addWide(QWidget* content) {
    QFrame* row = makeRow();
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(kRowMargin, 12, kRowMargin, 12);
    layout->addWidget(content);
    return row;
}

Page::Page(const QString& title, QWidget* parent) : QScrollArea(parent), content_(new QVBoxLayout) {
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* whole = new QWidget;
    auto* across = new QHBoxLayout(whole);
    auto* column = new QWidget;
    column->setMaximumWidth(kPageWidth);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(content_);
    layout->addStretch();
    across->setContentsMargins(kPageMargin, 24, kPageMargin, kPageMargin);
    across->addWidget(column, 1);
    content_->setSpacing(8);
    content_->addWidget(makeLabel(title, "title"));
    setWidget(whole);
    setAccessibleName(title);
}

Card* Page::addCard(const QString& heading) {
    const bool isFirst = content_->count() == 1;  // the title stands there already
    if (isFirst || !heading.isEmpty()) {
        content_->addSpacing(10);
    }
    if (!heading.isEmpty()) {
        content_->addWidget(makeLabel(heading, "heading"));
    }
    auto* card = new Card;
    card->setAccessibleName(heading);
    content_->addWidget(card);
    return card;
}

void Page::addText(const QString& text) {
    content_->addWidget(makeLabel(text, "hint"));
}

void Page::addWidget(QWidget* widget, Qt::Alignment alignment) {
    content_->addWidget(widget, 0, alignment);
}

}  // namespace ostrel
