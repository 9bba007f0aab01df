// Imports a declaration and dies, without any farewell, before the statement whose number it is given; 0 lets it live
// until the import has said what came of it.
// usage: import_victim HOST-URL INPUTS-URL STATEMENT

#include "StoredDeclaration.h"
#include "doubles/InterruptedConexionDB.h"

#include <QCoreApplication>
#include <QLocale>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    const QStringList arguments = QCoreApplication::arguments();
    const int last = arguments.value(3).toInt();
    const auto die = [last](int statement) {
        if (statement == last) {
            std::raise(SIGKILL);
        }
    };
    core::SharedState state;
    state.sInternoExt = u"TOR1"_s;
    state.g_DBTOR.assign(connectStore(arguments.value(1), Access::ReadOnly));
    state.g_DBINS.assign(std::make_shared<doubles::InterruptedConexionDB>(connectStore(arguments.value(2)), die));
    std::puts(qPrintable(declarations::importStored(state, u"26073IT14000011A"_s)));
    return 0;
}
