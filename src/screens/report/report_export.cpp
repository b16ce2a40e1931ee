#include "screens/report/report_export.h"

#include <QSaveFile>

namespace ostrel::ReportExport {

Result write(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) {
        return Result::done;
    }
    return file.error() == QFileDevice::ResourceError ? Result::full : Result::failed;
}

}  // namespace ostrel::ReportExport
