#include "app/ApplicationSetup.h"

#include "services/documents/DocumentFont.h"
#include "theme/Logo.h"
#include "theme/Theme.h"
#include "widgets/WheelGuard.h"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace ApplicationSetup {

namespace {

void setApplicationFont()
{
    // Starting from the default font keeps its size.
    QFont font = QApplication::font();
    font.setFamily(u"Microsoft YaHei UI"_s);
    font.setStyleStrategy(QFont::PreferAntialias);
    QApplication::setFont(font);
}

void installChineseTexts(QApplication& app)
{
    const QLocale china(QLocale::Chinese, QLocale::China);
    QLocale::setDefault(china);
    auto* translator = new QTranslator(&app);
    if (translator->load(
            china, u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

} // namespace

void keepHomeClean()
{
    static const QTemporaryDir viewState;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, viewState.path());
}

void configure(QApplication& app)
{
    DocumentFont::registerSubstitutes();
    setApplicationFont();
    installChineseTexts(app);
    QCoreApplication::setOrganizationName(u"Brixa"_s);
    QCoreApplication::setApplicationName(u"Brixa"_s);
    QCoreApplication::setApplicationVersion(u"1.0.0"_s);
    QApplication::setWindowIcon(Logo::icon());
    Theme::instance().apply(ThemeMode::Light);
    WheelGuard::protectApplication();
}

} // namespace ApplicationSetup
