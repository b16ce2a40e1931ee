#include "screens/texts/toolkit_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <utility>

namespace ostrel::Texts {

ToolkitTexts::ToolkitTexts() : ToolkitTexts(QLibraryInfo::path(QLibraryInfo::TranslationsPath)) {}
ToolkitTexts::ToolkitTexts(QString folder) : folder_(std::move(folder)) {}
ToolkitTexts::~ToolkitTexts() = default;

// The one of a language without a country is looked for as well, and that of its main country.
void ToolkitTexts::setLanguage(std::string_view code) {
    catalogue_.reset();
    if (code == "en") {
        return;
    }
    const QLocale locale(QString::fromUtf8(code.data(), static_cast<qsizetype>(code.size())));
    auto catalogue = std::make_unique<QTranslator>();
    if (catalogue->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"), folder_)) {
        QCoreApplication::installTranslator(catalogue.get());
        catalogue_ = std::move(catalogue);
    }
}

}  // namespace ostrel::Texts
