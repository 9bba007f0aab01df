// What any program with a window has to do until its window is painted: the limit of bench_startup.

#include <QApplication>
#include <QDialog>

#include <tornel/FirstPaint.h>

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QDialog dialog;
    tornel::quitWhenPainted(dialog);
    dialog.show();
    return QApplication::exec();
}
