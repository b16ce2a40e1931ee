#include "core/settings/json.h"

namespace ostrel {
namespace {

// Goes through a document and keeps only where it failed.
struct FailureFinder : nlohmann::json_sax<Json> {
    bool null() override { return true; }
    bool boolean(bool /*value*/) override { return true; }
    bool number_integer(number_integer_t /*value*/) override { return true; }
    bool number_unsigned(number_unsigned_t /*value*/) override { return true; }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return true; }
    bool string(string_t& /*value*/) override { return true; }
    bool binary(binary_t& /*value*/) override { return true; }
    bool start_object(std::size_t /*count*/) override { return true; }
    bool key(string_t& /*value*/) override { return true; }
    bool end_object() override { return true; }
    bool start_array(std::size_t /*count*/) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(std::size_t endOfToken, const std::string& failedToken,
                     const nlohmann::detail::exception& error) override {
        constexpr int kNumberOverflow = 406;
        end = endOfToken;
        token = failedToken;
        isOverflow = error.id == kNumberOverflow;
        return false;
    }

    std::size_t end = 0;
    std::string token;
    bool isOverflow = false;
};

// The document with null for each such number; absent when something else is wrong with it.
std::optional<std::string> withoutNumbersTooLarge(std::string_view bytes) {
    constexpr int kMost = 1000;
    std::string text(bytes);
    for (int i = 0; i < kMost; ++i) {
        FailureFinder finder;
        if (Json::sax_parse(text, &finder)) {
            return text;
        }
        if (!finder.isOverflow || finder.token.size() > finder.end || finder.end > text.size()) {
            return std::nullopt;
        }
        text.replace(finder.end - finder.token.size(), finder.token.size(), "null");
    }
    return std::nullopt;
}

}  // namespace

std::optional<Json> parseJson(std::string_view bytes) {
    Json document = Json::parse(bytes, nullptr, /*allow_exceptions=*/false);
    if (document.is_discarded()) {
        const std::optional<std::string> mended = withoutNumbersTooLarge(bytes);
        if (!mended) {
            return std::nullopt;
        }
        document = Json::parse(*mended);
    }
    return document;
}

}  // namespace ostrel
