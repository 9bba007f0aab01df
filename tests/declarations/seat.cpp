// A seat in a process of its own: does one thing to a stock through its screen and says what came of it. Before one of
// the statements that this runs on the stock (0: none) it dies without any farewell, or says "waiting" and reads a
// line. usage: seat die|wait STATEMENT STOCK-URL import HOST-URL INTERNO NUMBER
//        seat die|wait STATEMENT STOCK-URL renumber OLD-NUMBER NEW-NUMBER
//        seat die|wait STATEMENT STOCK-URL delete NUMBER

#include "StoredDeclaration.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/ListView.h>
#include <declarations/frmDIT.h>

#include <QApplication>
#include <QLocale>

#include <csignal>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

/// Lists the declarations over a connection of its own, selects one, and goes on with the seat's.
void selectDeclaration(declarations::frmDIT& form, core::Component& component, const QString& stockUrl,
                       const QString& number, std::shared_ptr<ConexionDB> stock)
{
    component.state.g_DBINS.assign(connectStore(stockUrl));
    form.Form_Load();
    auto& list = *static_cast<controls::ListView*>(form.findChild<QTreeView*>(u"lstVDIT"_s));
    int row = 0;
    while (row < list.rowCount() && list.text(row, 0) != number) {
        ++row;
    }
    list.selectRow(row);
    component.state.g_DBINS.assign(std::move(stock));
}

QString lastBox(const doubles::TestComponent& component)
{
    return component.prompts.texts().constLast().section(u"\r\n"_s, 0, 0);
}

QString done(const QStringList& task, const QString& stockUrl, const std::shared_ptr<ConexionDB>& stock)
{
    doubles::TestComponent component;
    if (task.constFirst() == u"import") {
        component.state.g_DBTOR.assign(connectStore(task.at(1), Access::ReadOnly));
        component.state.g_DBINS.assign(stock);
        component.state.sInternoExt = task.at(2);
        component.state.g_sAduana = u"073"_s;
        return declarations::importOnScreen(component, {{u"txtINTDCL"_s, task.at(3)}});
    }
    declarations::frmDIT form(component, {});
    selectDeclaration(form, component, stockUrl, task.at(1), stock);
    component.prompts.willAnswer(core::AnswerYes);
    if (task.constFirst() == u"renumber") {
        component.prompts.willType(task.at(2));
        form.lp_ModificarDCL();
    } else {
        form.f_EliminarDIT();
    }
    return lastBox(component);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    const QStringList arguments = QCoreApplication::arguments();
    const bool dies = arguments.at(1) == u"die";
    const int last = arguments.at(2).toInt();
    const auto hook = [&](int statement) {
        if (statement != last) {
            return;
        }
        if (dies) {
            std::raise(SIGKILL);
        }
        std::puts("waiting");
        std::fflush(stdout);
        static_cast<void>(std::getchar());
    };
    const QString& stockUrl = arguments.at(3);
    const auto stock = std::make_shared<doubles::InterruptedConexionDB>(connectStore(stockUrl), hook);
    std::puts(done(arguments.mid(4), stockUrl, stock).toUtf8().constData());
    return EXIT_SUCCESS;
}
