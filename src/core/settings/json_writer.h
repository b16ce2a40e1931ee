#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ostrel {

struct JsonText {
    std::optional<std::string> text;
    std::string error;  // why there is no text
};

// Prints a JSON document (RFC 8259) as it goes along, without a tree in between: the log of breaks
// is written whole after each one.
class JsonWriter {
  public:
    void beginObject() { open('{'); }
    void endObject() { text_ += '}'; }
    void beginArray() { open('['); }
    void endArray() { text_ += ']'; }

    // `name` needs no escapes.
    void key(std::string_view name) {
        plainText(name);
        text_ += ':';
    }
    void boolean(bool value);
    void integer(std::int64_t value);
    void unsignedInteger(std::uint64_t value);

    // Always with a fraction or an exponent; read again it is the same number, bit for bit. One
    // that is not finite fails.
    void number(double value);

    // Fails when it is not valid UTF-8.
    void text(const std::string& value);
    // Printable ASCII without quotes and backslashes.
    void plainText(std::string_view value);

    // The document, or the first failure.
    [[nodiscard]] JsonText take();

  private:
    void open(char bracket);
    void separate();
    void fail(std::string error);

    std::string text_;
    std::string error_;
};

}  // namespace ostrel
