#include "CorvidKit/Toolkit/Fonts.h"

#include <QDir>
#include <QFontDatabase>

namespace corvid::toolkit {

void loadFonts() {
    const QDir folder(QStringLiteral(":/fonts"));
    for (const QString& file : folder.entryList(QDir::Files)) {
        QFontDatabase::addApplicationFont(folder.filePath(file));
    }
}

} // namespace corvid::toolkit
