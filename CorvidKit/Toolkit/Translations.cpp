#include "CorvidKit/Toolkit/Translations.h"

#include <QDir>
#include <QGuiApplication>
#include <QLocale>

namespace corvid::toolkit {

namespace {

using Translators = std::vector<std::unique_ptr<QTranslator>>;

Translators catalogues(const QString& language) {
    const QDir folder(QStringLiteral(":/translations"));
    Translators found;
    for (const QString& file : folder.entryList({QStringLiteral("*_%1.qm").arg(language)}, QDir::Files)) {
        auto translator = std::make_unique<QTranslator>();
        if (translator->load(folder.filePath(file))) {
            found.push_back(std::move(translator));
        }
    }
    return found;
}

} // namespace

Translators loadTranslations(const std::vector<std::string>& languages) {
    QString chosen = QStringLiteral("en");
    Translators translators;
    for (const std::string& language : languages) {
        chosen = QString::fromStdString(language);
        translators = catalogues(chosen);
        if (!translators.empty()) {
            break;
        }
    }
    if (translators.empty()) {
        chosen = QStringLiteral("en");
        translators = catalogues(chosen);
    }
    for (const auto& translator : translators) {
        QGuiApplication::installTranslator(translator.get());
    }
    const QLocale locale(chosen);
    QLocale::setDefault(locale);
    QGuiApplication::setLayoutDirection(locale.textDirection());
    return translators;
}

} // namespace corvid::toolkit
