#pragma once

#include <QByteArray>
#include <QString>

namespace ostrel::ReportExport {

enum class Result { done, full, failed };

// All of the bytes, or whatever the file held before.
[[nodiscard]] Result write(const QString& path, const QByteArray& bytes);

}  // namespace ostrel::ReportExport
