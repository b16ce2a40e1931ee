#include "core/settings/json.h"

#include <algorithm>
#include <cmath>

namespace ostrel {
namespace {

bool allNumbersFinite(const Json& value) {
    if (value.is_number_float()) {
        return std::isfinite(value.get<double>());
    }
    return !value.is_structured() || std::all_of(value.begin(), value.end(), allNumbersFinite);
}

}  // namespace

std::optional<Json> parseJson(std::string_view bytes) {
    Json document = Json::parse(bytes, nullptr, /*allow_exceptions=*/false);
    if (document.is_discarded()) {
        return std::nullopt;
    }
    return document;
}

JsonText printJson(const Json& document) {
    // The library would print such a number as null.
    if (!allNumbersFinite(document)) {
        return {std::nullopt, "a number is not finite"};
    }
    try {
        return {document.dump(), {}};
    } catch (const Json::exception& failure) {
        return {std::nullopt, failure.what()};
    }
}

}  // namespace ostrel
