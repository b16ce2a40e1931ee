#pragma once

#include <QString>
#include <memory>
#include <string_view>

class QTranslator;

namespace ostrel::Texts {

// The toolkit's own words, as in the menu of a text field or in its dialog for files: one catalogue
// of its at most, that of the language. Where it is not installed they stay English.
class ToolkitTexts {
  public:
    // From the folder that the toolkit was installed with.
    ToolkitTexts();
    explicit ToolkitTexts(QString folder);
    ToolkitTexts(const ToolkitTexts&) = delete;
    ToolkitTexts& operator=(const ToolkitTexts&) = delete;
    ~ToolkitTexts();

    // A code of ISO 639-1. Needs a QCoreApplication.
    void setLanguage(std::string_view code);

  private:
    const QString folder_;
    std::unique_ptr<QTranslator> catalogue_;
};

}  // namespace ostrel::Texts
