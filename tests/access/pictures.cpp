// Saves a picture of every screen, in both themes, as it opens and at its smallest, into a folder: for looking at.

#include "EveryScreen.h"

#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::access;

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    if (argc != 2) {
        qCritical("usage: screen_pictures FOLDER");
        return 2;
    }
    QLocale::setDefault(QLocale(qEnvironmentVariable("OVELDRA_PICTURES_LOCALE", u"es_AR"_s)));
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (const bool dark : {false, true}) {
        const Theme theme(dark);
        for (const ScreenCase& screenCase : everyScreen()) {
            ScreenUnderTest screen(screenCase.make);
            const QString name = screenCase.name + (dark ? u"-dark"_s : u"-light"_s);
            screen.whileOpen([&] {
                screen.form().grab().save(folder.filePath(name + u".png"_s));
                screen.form().resize(screen.form().minimumSizeHint());
                QTest::qWait(0);
                screen.form().grab().save(folder.filePath(name + u"-smallest.png"_s));
            });
        }
    }
    return 0;
}
