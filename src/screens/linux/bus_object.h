#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <map>

namespace ostrel {

// An object on a bus with one interface of its own: a table of read-only properties and one of
// methods. What does not fit them is answered with an error.
class BusObject : public QDBusVirtualObject {
  public:
    BusObject(const BusObject&) = delete;
    BusObject& operator=(const BusObject&) = delete;
    ~BusObject() override;

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  protected:
    struct Place {
        QLatin1String path;
        QLatin1String interface;
    };
    using Answer = std::function<QDBusMessage(const QDBusMessage& call)>;

    BusObject(QDBusConnection bus, const Place& place);

    // Calls of `name` get their reply from `answer`. `takes` and `returns` are the arguments, each
    // as NAME:SIGNATURE, with spaces between them.
    void addMethod(const char* name, const char* takes, const char* returns, Answer answer);

    // For introspection only.
    void addSignal(const char* name, const char* carries);

    // Whether that changed the property.
    bool setValue(QLatin1String name, const QVariant& value);

    // Somebody asks for this property by its name, and gets what it is after this.
    virtual void handleRead(const QString& /*name*/, const QString& /*asker*/) {}

    void sendSignal(QLatin1String name, const QVariantList& arguments = {});

    [[nodiscard]] QDBusConnection& bus() { return bus_; }

  private:
    struct Method {
        QString signature;  // of all that it takes
        Answer answer;
    };

    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage answerAboutProperties(const QDBusMessage& call);

    QDBusConnection bus_;
    Place place_;
    std::map<QString, Method> methods_;
    QVariantMap properties_;
    QString members_;  // as introspection has them
};

}  // namespace ostrel
