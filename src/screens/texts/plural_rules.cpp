#include "screens/texts/plural_rules.h"

#include <algorithm>
#include <initializer_list>

namespace ostrel::Texts {
namespace {

bool isOneOf(std::string_view language, std::initializer_list<std::string_view> languages) {
    return std::ranges::find(languages, language) != languages.end();
}

bool isBetween(std::int64_t number, std::int64_t least, std::int64_t most) {
    return number >= least && number <= most;
}

// 2 to 4, 22 to 24 and so on, but not 12 to 14.
bool endsInFew(std::int64_t number) {
    return isBetween(number % 10, 2, 4) && !isBetween(number % 100, 12, 14);
}

std::string_view eastSlavic(std::int64_t number) {
    if (number % 10 == 1 && number % 100 != 11) {
        return "one";
    }
    return endsInFew(number) ? "few" : "many";
}

std::string_view polish(std::int64_t number) {
    if (number == 1) {
        return "one";
    }
    return endsInFew(number) ? "few" : "many";
}

std::string_view arabic(std::int64_t number) {
    if (number <= 2) {
        return number == 0 ? "zero" : number == 1 ? "one" : "two";
    }
    if (isBetween(number % 100, 3, 10)) {
        return "few";
    }
    return isBetween(number % 100, 11, 99) ? "many" : "other";
}

}  // namespace

std::string_view pluralCategory(std::string_view language, std::int64_t number) {
    const std::int64_t size = number < 0 ? -number : number;
    if (isOneOf(language, {"ru", "uk"})) {
        return eastSlavic(size);
    }
    if (language == "pl") {
        return polish(size);
    }
    if (language == "ar") {
        return arabic(size);
    }
    if (isOneOf(language, {"ja", "ko", "zh"})) {
        return "other";
    }
    const bool isNoneOne = isOneOf(language, {"fr", "pt", "hi"});
    return size == 1 || (size == 0 && isNoneOne) ? "one" : "other";
}

}  // namespace ostrel::Texts
