#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/settings/json.h"

namespace ostrel {

// Damages a JSON document as disks, editors, people and other versions do: some of its bytes, or
// its structure with the JSON left whole. The same source of randomness gives the same damage.
class DocumentMutator {
  public:
    explicit DocumentMutator(std::mt19937& random) : random_(random) {}

    std::string mutated(const std::string& document) {
        const std::size_t kind = below(9);
        std::string text = kind < 6 ? withChangedStructure(document) : document;
        for (std::size_t left = kind < 5 ? 0 : howOften(); left > 0; --left) {
            changeBytes(text);
        }
        return text;
    }

  private:
    // What no Json can hold is written as a text and turned into what it stands for at the end.
    static constexpr const char* kRaw = "@raw ";
    static constexpr const char* kTwin = "@twin";

    static std::vector<std::string> words(const std::string& text) {
        std::istringstream stream(text);
        return {std::istream_iterator<std::string>(stream), {}};
    }
    static std::string repeated(std::size_t count, char character) {
        std::string text;
        text.resize(count, character);
        return text;
    }
    static std::string nested(std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    }
    static bool isPlain(const Json& node) { return !node.is_structured(); }

    std::size_t below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    // Mostly once: what is damaged in many places is not read in any case.
    std::size_t howOften() { return below(3) == 0 ? 2 + below(2) : 1; }
    template <class List>
    auto& oneOf(List& list) {
        return list[below(std::size(list))];
    }

    std::string oddBytes() {
        static const auto kOdd = words(
            "\xFF \xC3 \xED\xA0\x80 \xC0\x80 \xF4\x90\x80\x80 \xEF\xBB\xBF 1e999 -1e999 , } null "
            "\\u0000 \\ud800");
        switch (below(6)) {
            case 0:
                return repeated(1 + below(3), '\0');
            case 1:
                return nested(below(4) == 0 ? 2'000 : 20);
            case 2:
                return repeated(1 + below(400), '9');
            case 3:
                return repeated(1, static_cast<char>(below(256)));
            default:
                return oneOf(kOdd);
        }
    }

    void changeBytes(std::string& text) {
        const std::size_t at = below(text.size() + 1);
        const std::size_t digit = text.find_first_of("0123456789", at);
        switch (below(8)) {
            case 0:
                if (at < text.size()) {
                    text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
                }
                break;
            case 1:
                text.erase(at, 1 + below(3));
                break;
            case 2:
                text.resize(at);
                break;
            case 3:
                text.insert(below(text.size() + 1), text.substr(at, below(40)));
                break;
            case 4:
            case 5:
                text.insert(at, oddBytes());
                break;
            default:  // the change that a document survives most often
                if (digit != std::string::npos) {
                    text[digit] = static_cast<char>('0' + below(10));
                }
        }
    }

    std::string withChangedStructure(const std::string& document) {
        Json root = Json::parse(document);
        for (std::size_t left = howOften(); left > 0; --left) {
            changeStructure(root);
        }
        std::string text = root.dump();
        const std::string raw = std::string("\"") + kRaw;
        for (auto at = text.find(raw); at != std::string::npos; at = text.find(raw, at)) {
            text.erase(text.find('"', at + 1), 1);
            text.erase(at, raw.size());
        }
        const std::string twin = kTwin;
        for (auto at = text.find(twin); at != std::string::npos; at = text.find(twin, at)) {
            text.erase(at, twin.size());
        }
        return text;
    }

    // Null when there is no such node.
    template <class Wanted>
    Json* pick(Json& root, Wanted wanted) {
        std::vector<Json*> found;
        std::vector<Json*> open{&root};
        while (!open.empty()) {
            Json* node = open.back();
            open.pop_back();
            if (wanted(*node)) {
                found.push_back(node);
            }
            if (node->is_structured()) {
                for (Json& inner : *node) {
                    open.push_back(&inner);
                }
            }
        }
        return found.empty() ? nullptr : oneOf(found);
    }

    Json oddValue() {
        static const auto kOdd = words(
            R"(null true false 0 1 -1 2.0 0.5 -0.0 "" "x" "900" [] {} [null] [{}] [1,"user",true]
               1e400 -1e400 1e308 -1e308 5e-324 1e18 1000000000000 4294967296 9223372036854775807
               9223372036854775808 -9223372036854775808 18446744073709551616 "\u0000\ud83d\ude00")");
        const std::size_t at = below(kOdd.size() + 1);
        const std::string text = at < kOdd.size() ? kOdd[at] : nested(2000);
        return Json::accept(text) && text.size() < 100 ? Json::parse(text) : Json(kRaw + text);
    }

    void changeStructure(Json& root) {
        const auto isObject = [](const Json& node) { return node.is_object(); };
        const auto isList = [](const Json& node) { return node.is_array(); };
        const std::size_t kind = below(12);
        if (Json* object = kind < 4 ? pick(root, isObject) : nullptr) {
            changeKeys(*object);
        } else if (Json* list = kind < 6 ? pick(root, isList) : nullptr) {
            changeList(*list);
        } else if (Json* plain = kind < 11 ? pick(root, isPlain) : nullptr) {
            changePlain(root, *plain);
        } else {
            Json& any = *pick(root, [](const Json&) { return true; });
            any = below(2) == 0 ? oddValue() : Json{{"value", any}};
        }
    }

    void changeKeys(Json& object) {
        std::vector<std::string> keys;
        for (const auto& [key, value] : object.items()) {
            keys.push_back(key);
        }
        if (keys.empty() || below(5) == 0) {
            object["unheardOf"] = oddValue();
            return;
        }
        const std::string key = oneOf(keys);
        const Json value = object[key];
        switch (below(3)) {
            case 0:
                object.erase(key);
                break;
            case 1:
                object.erase(key);
                object[key + "s"] = value;
                break;
            default:
                object[key + kTwin] = below(2) == 0 ? oddValue() : value;
        }
    }

    void changeList(Json& list) {
        if (list.empty() || below(5) == 0) {
            list.push_back(oddValue());
            return;
        }
        const Json entry = oneOf(list);
        switch (below(5)) {
            case 0:
                list.insert(list.begin(), entry);
                break;
            case 1:
                list.erase(below(list.size()));
                break;
            case 2:
                std::reverse(list.begin(), list.end());
                break;
            case 3:
                list = Json::array();
                break;
            default:
                list.insert(list.end(), below(4) == 0 ? 300 : 3, entry);
        }
    }

    void changePlain(Json& root, Json& plain) {
        switch (below(4)) {
            case 0:
                std::swap(*pick(root, isPlain), plain);
                break;
            case 1:
                plain = oddValue();
                break;
            default:
                nudge(root, plain);
        }
    }

    // To something near it that may well be valid.
    void nudge(Json& root, Json& plain) {
        static const auto kTexts = words(
            "eye body completed skipped postponed autoFadeOut deferred user focus schedule reached "
            "missed free standard strict both gentle Eye 2026-02-30 2026-00-10 0000-01-01 "
            "2026-3-26 "
            "9999-12-31 10000-01-01 2026-03-26");
        static constexpr int kSteps[] = {
            1, -1, 60, -60, 3600, -3600, 86'400, -86'400, 5'000'000, -5'000'000, 1'000'000'000};
        const auto isText = [](const Json& node) { return node.is_string(); };
        if (plain.is_boolean()) {
            plain = !plain.get<bool>();
        } else if (plain.is_number_integer() && below(4) > 0) {
            const auto number = plain.get<std::uint64_t>();
            const auto step = static_cast<std::uint64_t>(oneOf(kSteps));
            plain = static_cast<std::int64_t>(below(4) == 0 ? 0 - number : number + step);
        } else if (plain.is_number()) {
            plain = plain.get<double>() + oneOf(kSteps) / 2.0;
        } else {
            plain = plain.is_null() || below(2) == 0 ? Json(oneOf(kTexts)) : *pick(root, isText);
        }
    }

    std::mt19937& random_;
};

}  // namespace ostrel
