#include "Pictures.h"

#include "Hands.h"
#include "theme/Theme.h"
#include "widgets/Toast.h"

#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

// Fewer colours than any window with text on it has.
constexpr qsizetype fewestColours = 8;

bool showsSomething(const QImage& picture)
{
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 3) {
        for (int x = 0; x < picture.width(); x += 3) {
            colours.insert(picture.pixel(x, y));
            if (colours.size() >= fewestColours)
                return true;
        }
    }
    return false;
}

// A message that goes by itself would be in the next pictures or not, as the machine is fast.
void hideToasts(QWidget& window)
{
    for (Toast* toast : window.findChildren<Toast*>())
        toast->hide();
}

} // namespace

Pictures::Pictures(const QString& folder)
    : m_folder(folder)
{
}

Problem Pictures::take(QWidget& window, const QString& name)
{
    Hands::waitForPainting();
    hideToasts(window);
    const QString folder = m_folder + u'/' + codeOf(Theme::instance().mode());
    const QString path = u"%1/%2.png"_s.arg(folder, name);
    if (QFileInfo::exists(path))
        return u"the picture %1 is taken twice"_s.arg(path);
    const QImage picture = window.grab().toImage();
    if (!showsSomething(picture))
        return u"the picture %1 shows nothing"_s.arg(path);
    if (!QDir().mkpath(folder) || !picture.save(path))
        return u"the picture %1 cannot be written"_s.arg(path);
    m_files += path;
    return {};
}

Problem Pictures::takeInEveryTheme(QWidget& window, const QString& name)
{
    const ThemeMode present = Theme::instance().mode();
    Problem problem;
    for (const ThemeMode mode : allValues<ThemeMode>()) {
        Theme::instance().apply(mode);
        if (!problem)
            problem = take(window, name);
    }
    Theme::instance().apply(present);
    return problem;
}
