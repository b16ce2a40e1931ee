#include "platform/macos/assertion_lists.h"

namespace ostrel {

PowerAssertions::ByProcess assertionTypes(const std::vector<AssertionList>& lists,
                                          const std::string& typeKey) {
    PowerAssertions::ByProcess byProcess;
    for (const AssertionList& list : lists) {
        if (const auto process = int32Of(list.processIdentifier)) {
            auto& types = byProcess[*process];
            for (const PlainDictionary& assertion : list.assertions) {
                types.push_back(textOf(valueIn(assertion, typeKey)));
            }
        }
    }
    return byProcess;
}

}  // namespace ostrel
