#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "core/settings/json.h"

namespace ostrel {

// Damages a JSON document as disks, editors, people and other versions do: some of its bytes, or
// its structure with the JSON left whole. The same source of randomness gives the same damage.
class DocumentMutator {
  public:
    explicit DocumentMutator(std::mt19937& random) : random_(random) {}

    std::string mutated(const std::string& document) {
        if (oneIn(3)) {
            std::string text = document;
            changeBytes(text);
            return text;
        }
        Json root = Json::parse(document);
        changeStructure(root);
        if (oneIn(3)) {
            changeStructure(root);
        }
        return root.dump();
    }

  private:
    static std::vector<std::string> words(const std::string& text) {
        std::istringstream stream(text);
        return {std::istream_iterator<std::string>(stream), {}};
    }
    std::size_t below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class List>
    auto& oneOf(List& list) {
        return list[below(std::size(list))];
    }

    std::string oddBytes() {
        static const auto kOdd = words(
            "\xFF \xC3 \xED\xA0\x80 \xC0\x80 \xEF\xBB\xBF 1e999 -1e999 , } null \\u0000 \\ud800");
        const std::string whole[] = {std::string(1 + below(3), '\0'),
                                     std::string(2'000, '[') + std::string(2'000, ']'),
                                     std::string(1 + below(400), '9')};
        return oneIn(3) ? oneOf(whole) : oneOf(kOdd);
    }

    void changeBytes(std::string& text) {
        const std::size_t at = below(text.size());
        const std::size_t digit = text.find_first_of("0123456789", at);
        switch (below(5)) {
            case 0:
                text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
                break;
            case 1:
                text.erase(at, 1 + below(3));
                text += ' ';
                break;
            case 2:
                text.resize(at + 1);
                break;
            case 3:
                text.insert(at, oddBytes());
                break;
            default:  // the change that a document survives most often
                if (digit != std::string::npos) {
                    text[digit] = static_cast<char>('0' + below(10));
                }
        }
    }

    Json oddValue() {
        static const auto kOdd = words(
            R"(null true false 0 1 -1 2.0 0.5 -0.0 "" "x" "900" [] {} [null] [{}] [1,"user",true]
               1e308 -1e308 5e-324 1e18 1000000000000 4294967296 9223372036854775807
               9223372036854775808 -9223372036854775808 18446744073709551616 "\u0000\ud83d\ude00")");
        return Json::parse(oneOf(kOdd));
    }

    void changeStructure(Json& root) {
        std::vector<Json*> nodes{&root};
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (nodes[i]->is_structured()) {
                for (Json& inner : *nodes[i]) {
                    nodes.push_back(&inner);
                }
            }
        }
        Json& node = *(oneIn(4) ? &root : oneOf(nodes));
        if (oneIn(8)) {
            node = oneIn(2) ? oddValue() : Json{{"value", node}};
        } else if (node.is_object()) {
            changeKeys(node);
        } else if (node.is_array()) {
            changeList(node);
        } else {
            nudge(node);
        }
    }

    void changeKeys(Json& object) {
        if (object.empty() || oneIn(4)) {
            object["unheardOf"] = oddValue();
            return;
        }
        const std::string key =
            std::next(object.begin(), static_cast<std::ptrdiff_t>(below(object.size()))).key();
        if (oneIn(2)) {
            object[key + "s"] = Json(object[key]);
        }
        object.erase(key);
    }

    void changeList(Json& list) {
        if (list.empty() || oneIn(4)) {
            list.push_back(oddValue());
            return;
        }
        const Json entry = oneOf(list);
        if (oneIn(4)) {
            list.erase(below(list.size()));
        } else if (oneIn(3)) {
            std::reverse(list.begin(), list.end());
        } else if (oneIn(2)) {
            list = Json::array();
        } else {
            list.insert(list.end(), oneIn(4) ? 300 : 3, entry);
        }
    }

    // Mostly to something near it that may well be valid.
    void nudge(Json& plain) {
        static const auto kTexts = words(
            "eye body completed skipped deferred user focus reached missed free standard strict "
            "both gentle Eye 2026-02-30 0000-01-01 2026-3-26 9999-12-31 10000-01-01 2026-03-26");
        static constexpr int kSteps[] = {
            1, -1, 60, -60, 3600, -3600, 86'400, -86'400, 5'000'000, -5'000'000, 1'000'000'000};
        if (oneIn(4)) {
            plain = oddValue();
        } else if (plain.is_boolean()) {
            plain = !plain.get<bool>();
        } else if (plain.is_number_integer()) {
            const auto number = plain.get<std::uint64_t>();
            const auto step = static_cast<std::uint64_t>(oneOf(kSteps));
            plain = static_cast<std::int64_t>(oneIn(4) ? 0 - number : number + step);
        } else if (plain.is_number()) {
            plain = plain.get<double>() + oneOf(kSteps) / 2.0;
        } else {
            plain = oneOf(kTexts);
        }
    }

    std::mt19937& random_;
};

}  // namespace ostrel
