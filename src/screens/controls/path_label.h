#pragma once

class QLabel;
class QString;

namespace ostrel {

// For a name that runs from left to right in every language and stands where its lines begin.
[[nodiscard]] QLabel* makeNameLabel(const QString& name);

// The same for a path, which can be selected and copied.
[[nodiscard]] QLabel* makePathLabel(const QString& path);

}  // namespace ostrel
