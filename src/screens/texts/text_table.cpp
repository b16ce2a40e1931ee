#include "screens/texts/text_table.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

static void registerTexts() {
    Q_INIT_RESOURCE(texts);
}

namespace ostrel::Texts {

TextTable::TextTable(std::string_view code) {
    registerTexts();
    QFile file(QStringLiteral(":/texts/%1.json")
                   .arg(QLatin1String(code.data(), static_cast<qsizetype>(code.size()))));
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    const QJsonObject texts = QJsonDocument::fromJson(file.readAll()).object();
    std::vector<std::pair<QByteArray, QByteArray>> read;
    qsizetype size = 0;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        read.emplace_back(text.key().toUtf8(), text.value().toString().toUtf8());
        size += read.back().first.size() + read.back().second.size();
    }
    words_.reserve(static_cast<std::size_t>(size));
    const auto kept = [this](const QByteArray& bytes) {
        const std::size_t start = words_.size();
        words_.insert(words_.end(), bytes.begin(), bytes.end());
        return std::string_view(words_.data() + start, static_cast<std::size_t>(bytes.size()));
    };
    entries_.reserve(read.size());
    for (const auto& [key, text] : read) {
        entries_.push_back({kept(key), kept(text)});
    }
    std::ranges::sort(entries_, {}, &Entry::key);
}

std::optional<std::string_view> TextTable::find(std::string_view key) const {
    const auto found = std::ranges::lower_bound(entries_, key, {}, &Entry::key);
    return found == entries_.end() || found->key != key ? std::nullopt : std::optional(found->text);
}

}  // namespace ostrel::Texts
