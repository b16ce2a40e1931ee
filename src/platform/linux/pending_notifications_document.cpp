#include "platform/linux/pending_notifications_document.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/api/preferences_store.h"

namespace ostrel {
namespace {

using Pending = NotificationSchedule::Pending;
using Words = std::map<std::string, std::string>;

constexpr QLatin1String kPending("pending");
constexpr QLatin1String kID("id");
constexpr QLatin1String kCategory("category");
constexpr QLatin1String kTitle("title");
constexpr QLatin1String kBody("body");
constexpr QLatin1String kKeyOfText("key");
constexpr QLatin1String kArguments("args");
constexpr QLatin1String kUserInfo("userInfo");
constexpr QLatin1String kAfterSeconds("afterSeconds");
constexpr QLatin1String kWeekday("weekday");
constexpr QLatin1String kHour("hour");
constexpr QLatin1String kSince("since");

QJsonValue encode(const std::string& text) {
    return QString::fromStdString(text);
}

QJsonValue encode(const LocalizedText& text) {
    QJsonArray arguments;
    for (const std::string& argument : text.args) {
        arguments.append(encode(argument));
    }
    return QJsonObject{{kKeyOfText, encode(text.key)}, {kArguments, arguments}};
}

QJsonValue encode(const Words& words) {
    QJsonObject object;
    for (const auto& [key, word] : words) {
        object.insert(QString::fromStdString(key), encode(word));
    }
    return object;
}

QJsonValue encode(const Pending& pending) {
    const NotificationRequest& request = pending.request;
    QJsonObject object{{kID, encode(request.id)},
                       {kCategory, encode(request.category)},
                       {kTitle, encode(request.title)},
                       {kBody, encode(request.body)},
                       {kUserInfo, encode(request.userInfo)},
                       {kSince, secondsSinceReference(pending.since)}};
    if (const auto* after = std::get_if<AfterSeconds>(&request.trigger)) {
        object.insert(kAfterSeconds, after->seconds);
    } else if (const auto* weekly = std::get_if<EveryWeek>(&request.trigger)) {
        object.insert(kWeekday, weekly->weekday);
        object.insert(kHour, weekly->hour);
    }
    return object;
}

// Reads field after field of one object, and remembers whether one of them was amiss.
class FieldReader {
  public:
    // Anything else than an object has no fields.
    explicit FieldReader(const QJsonValue& value) : object_(value.toObject()) {}

    [[nodiscard]] bool isGood() const { return isGood_; }
    [[nodiscard]] bool has(QLatin1String key) const { return object_.contains(key); }

    std::string text(QLatin1String key) { return textOf(object_.value(key)); }

    double number(QLatin1String key) {
        const QJsonValue value = object_.value(key);
        expect(value.isDouble() && std::isfinite(value.toDouble()));
        return value.toDouble();
    }

    int whole(QLatin1String key, int least, int most) {
        const QJsonValue value = object_.value(key);
        const int number = value.toInt(least - 1);
        expect(number >= least && number <= most);
        return number;
    }

    LocalizedText localizedText(QLatin1String key) {
        FieldReader inner(object_.value(key));
        LocalizedText text{inner.text(kKeyOfText), {}};
        inner.expect(inner.object_.value(kArguments).isArray());
        for (const auto& argument : inner.object_.value(kArguments).toArray()) {
            text.args.push_back(inner.textOf(argument));
        }
        expect(inner.isGood());
        return text;
    }

    Words words(QLatin1String key) {
        const QJsonValue value = object_.value(key);
        expect(value.isObject());
        const QJsonObject object = value.toObject();
        Words words;
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            words.emplace(entry.key().toStdString(), textOf(entry.value()));
        }
        return words;
    }

  private:
    std::string textOf(const QJsonValue& value) {
        expect(value.isString());
        return value.toString().toStdString();
    }
    void expect(bool holds) { isGood_ = isGood_ && holds; }

    QJsonObject object_;
    bool isGood_ = true;
};

std::optional<Pending> decode(const QJsonValue& value) {
    FieldReader fields(value);
    NotificationRequest request;
    request.id = fields.text(kID);
    request.category = fields.text(kCategory);
    request.title = fields.localizedText(kTitle);
    request.body = fields.localizedText(kBody);
    request.userInfo = fields.words(kUserInfo);
    if (fields.has(kAfterSeconds)) {
        request.trigger = AfterSeconds{fields.number(kAfterSeconds)};
    } else {
        request.trigger = EveryWeek{fields.whole(kWeekday, 1, 7), fields.whole(kHour, 0, 23)};
    }
    const WallTime since = wallTimeAt(fields.number(kSince));
    return fields.isGood() ? std::optional(Pending{std::move(request), since}) : std::nullopt;
}

std::optional<std::vector<Pending>> decodeAll(const std::string& bytes) {
    const QJsonValue list = QJsonDocument::fromJson(QByteArray::fromStdString(bytes))[kPending];
    if (!list.isArray()) {
        return std::nullopt;
    }
    std::vector<Pending> all;
    for (const auto& value : list.toArray()) {
        std::optional<Pending> pending = decode(value);
        if (!pending) {
            return std::nullopt;
        }
        all.push_back(*std::move(pending));
    }
    return all;
}

}  // namespace

PendingNotificationsDocument::PendingNotificationsDocument(PreferencesStore& preferences)
    : preferences_(preferences) {}

std::vector<Pending> PendingNotificationsDocument::load() {
    const std::optional<std::string> bytes = preferences_.read(kKey);
    if (!bytes) {
        return {};
    }
    std::optional<std::vector<Pending>> pending = decodeAll(*bytes);
    isUnreadable_ = !pending;
    return std::move(pending).value_or(std::vector<Pending>());
}

void PendingNotificationsDocument::save(const std::vector<Pending>& pending) {
    if (const auto fault = preferences_.encodingFault()) {
        preferences_.persistenceWriteFailed.send(
            {PersistenceError::Kind::encodeFailed, std::string(kKey), *fault});
        return;
    }
    if (std::exchange(isUnreadable_, false)) {
        preferences_.setAside(kKey);
    }
    if (pending.empty()) {
        preferences_.remove(kKey);
        return;
    }
    QJsonArray list;
    for (const Pending& one : pending) {
        list.append(encode(one));
    }
    const QJsonDocument document(QJsonObject{{kPending, list}});
    preferences_.write(kKey, document.toJson(QJsonDocument::Compact).toStdString());
}

}  // namespace ostrel
