// A seat at work, in a process of its own: does one thing after another to a stock, as a user would on the screens, and
// writes down what came of each, a line of words between tabs (see SeatLedger.h).
//
// usage: busy_seat STOCK-URL HOST-URL NAME SEED mixed OPERATIONS SECONDS   until both have passed
//        busy_seat STOCK-URL HOST-URL NAME SEED imports COUNT              until that many succeeded, whatever fails

#include "SeatLedger.h"
#include "StoredDeclaration.h"
#include "doubles/TestComponent.h"
#include "store/Dice.h"

#include <controls/ListView.h>
#include <core/Module1.h>
#include <declarations/frmDIT.h>
#include <runtime/ValueConverter.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QLocale>
#include <QThread>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;
using core::quoted;
using core::rowsOf;

namespace {

constexpr int numbersInUse = 24; ///< few, so that seats want the same

void say(const QStringList& words)
{
    QString line = words.join(u'\t');
    line.replace(u'\n', u' ').remove(u'\r');
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

/// A question of a rule's or an error of the database: what the user reads either way.
bool isRule(const QString& text)
{
    return text.endsWith(u"ya esta en la base de datos") || text.endsWith(u"ya existe en la base de datos.") ||
           text.startsWith(u"No pudo eliminar el interno") || text.startsWith(u"Confirma");
}

class BusySeat
{
public:
    BusySeat(const QString& stockUrl, const QString& hostUrl, QString name, quint64 seed)
        : m_name(std::move(name)), m_dice(seed), m_stock(connectStore(stockUrl)), m_browser(m_component, {})
    {
        m_component.clock.set(QDate(2026, 6, 1)); // the year of what is imported
        m_component.state.g_sAduana = u"073"_s;
        m_component.state.g_DBINS.assign(m_stock);
        m_component.state.g_DBTOR.assign(connectStore(hostUrl, Access::ReadOnly));
        m_browser.Form_Load();
        say({u"ready"_s, m_name});
    }

    void workMixed(int operations, const QDeadlineTimer& until)
    {
        constexpr std::array tasks = {&BusySeat::importAny, &BusySeat::importAny, &BusySeat::importAny,
                                      &BusySeat::discharge, &BusySeat::discharge, &BusySeat::renumber,
                                      &BusySeat::renumber,  &BusySeat::erase,     &BusySeat::lookAt};
        for (int done = 0; done < operations || !until.hasExpired(); ++done) {
            m_component.prompts.clear();
            (this->*tasks.at(static_cast<size_t>(m_dice.below(static_cast<int>(tasks.size())))))();
        }
    }

    void importUntil(int successes)
    {
        while (successes > 0) {
            m_component.prompts.clear();
            if (import(u"26%1N%2"_s.arg(m_name).arg(m_operation, 5, 10, QChar(u'0')))) {
                --successes;
            } else {
                QThread::msleep(20); // nobody tries again at once
            }
        }
    }

private:
    /// One of the few numbers, in any spelling.
    [[nodiscard]] QString anyNumber()
    {
        QString number = u"26073IT%1A"_s.arg(m_dice.below(numbersInUse));
        switch (m_dice.below(4)) {
        case 0:
            return number.toLower();
        case 1:
            return number + u' ';
        default:
            return number;
        }
    }

    [[nodiscard]] QString nextToken() { return m_name + u'.' + QString::number(++m_operation); }

    void importAny() { import(anyNumber()); }

    bool import(const QString& number)
    {
        const QString token = nextToken();
        m_component.state.sInternoExt = u"TOR%1"_s.arg(1 + m_dice.below(hostFiles));
        say({u"tried"_s, token, number});
        const QString status = importOnScreen(m_component, {{u"txtINTDCL"_s, number}, {u"txtINTDES"_s, token}});
        if (status == u"OK") {
            say({u"imported"_s, token, number});
            return true;
        }
        sayFailure(u"import"_s, status);
        return false;
    }

    static void sayFailure(const QString& task, const QString& text)
    {
        say({isRule(text) ? u"refused"_s : u"failed"_s, task, text});
    }

    [[nodiscard]] QString lastBox() const
    {
        const QStringList texts = m_component.prompts.texts();
        return texts.isEmpty() ? QString() : texts.constLast();
    }

    /// Lists the declarations and selects any; answers its number, or nothing when there is none.
    [[nodiscard]] QString select()
    {
        m_browser.Cargar_INTINS();
        if (!m_component.prompts.boxes().isEmpty()) {
            sayFailure(u"list"_s, lastBox());
            return {};
        }
        auto& list = *static_cast<controls::ListView*>(m_browser.findChild<QTreeView*>(u"lstVDIT"_s));
        if (list.rowCount() == 0) {
            return {};
        }
        const int row = m_dice.below(list.rowCount());
        list.selectRow(row);
        return list.text(row, 0);
    }

    void renumber()
    {
        const QString oldNumber = select();
        if (oldNumber.isEmpty()) {
            return;
        }
        const QString newNumber = anyNumber();
        m_component.prompts.willAnswer(core::AnswerYes);
        m_component.prompts.willType(newNumber);
        m_browser.lp_ModificarDCL();
        if (lastBox() == u"Número de declaración cambiada con exito.") {
            say({u"renumbered"_s, oldNumber, newNumber});
        } else {
            sayFailure(u"renumber"_s, lastBox());
        }
    }

    void erase()
    {
        const QString number = select();
        if (number.isEmpty()) {
            return;
        }
        m_component.prompts.willAnswer(core::AnswerYes);
        if (m_browser.f_EliminarDIT()) {
            say({u"deleted"_s, number});
        } else {
            sayFailure(u"delete"_s, lastBox());
        }
    }

    /// One unit of an article, as the exports of the host's suite discharge it.
    void discharge()
    {
        const QString number = select();
        if (number.isEmpty()) {
            return;
        }
        try {
            const auto burst = m_stock->beginBurst();
            const QString export_ = nextToken();
            const QString token = dischargeOne(quoted(number), export_);
            burst->commit();
            if (!token.isEmpty()) {
                say({u"discharged"_s, export_, token});
            }
        } catch (const RuntimeError& error) {
            sayFailure(u"discharge"_s, error.description());
        }
    }

    /// Answers the declaration's token; nothing when it is gone, or nothing is left of its article.
    [[nodiscard]] QString dischargeOne(const QString& number, const QString& export_)
    {
        const auto header = rowsOf(*m_stock, u"select INTDES from INTINS where INTDCL = "_s + number);
        const auto articles = rowsOf(*m_stock, u"select * from INS where INTDCL = "_s + number);
        if (header->atEof() || articles->atEof()) { // whether the articles may be missing is settled elsewhere
            return {};
        }
        for (int steps = m_dice.below(static_cast<int>(articles->recordCount())); steps > 0; --steps) {
            articles->moveNext();
        }
        if (runtime::toNumber(articles->value(u"ARTDSC")) < 1) {
            return {};
        }
        const QString place = u" and ARTITM = '%1' and ARTSBT = '%2'"_s.arg(articles->value(u"ARTITM").toString(),
                                                                            articles->value(u"ARTSBT").toString());
        QString token = header->value(u"INTDES").toString();
        core::run(*m_stock, u"insert into DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,RALCAN,EXTINT,EXTNOF) values ("_s + number +
                                u",'%1','%2','%3','1','%4','%5')"_s.arg(
                                    articles->value(u"ARTNRO").toString(), articles->value(u"ARTITM").toString(),
                                    articles->value(u"ARTSBT").toString(), token, export_));
        core::run(*m_stock, u"update INS set ARTDSC = ARTDSC - 1 where INTDCL = "_s + number + place);
        return token;
    }

    /// A declaration must look whole at any moment: by a single statement, and while no other seat may write.
    void lookAt()
    {
        const QString number = select();
        if (number.isEmpty()) {
            return;
        }
        try {
            const auto rows = rowsOf(*m_stock, u"select ARTITM,ARTSBT from INS where INTDCL = "_s + quoted(number) +
                                                   u" order by ARTITM desc,ARTSBT");
            const qsizetype items = rows->atEof() ? 0 : rows->value(u"ARTITM").toLongLong();
            if (rows->recordCount() != items * subitemsOfItem) {
                say({u"broken"_s, u"%1 rows of %2 items of %3"_s.arg(rows->recordCount()).arg(items).arg(number)});
            }
            const auto burst = m_stock->beginBurst();
            for (const QString& fault : faultsOfDeclaration(*m_stock, number)) {
                say({u"broken"_s, fault});
            }
            burst->commit();
            say({u"looked"_s, number});
        } catch (const RuntimeError& error) {
            sayFailure(u"look"_s, error.description());
        }
    }

    QString m_name;
    histories::Dice m_dice;
    std::shared_ptr<ConexionDB> m_stock;
    doubles::TestComponent m_component;
    frmDIT m_browser;
    int m_operation = 0;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    const QStringList arguments = QCoreApplication::arguments();
    BusySeat seat(arguments.at(1), arguments.at(2), arguments.at(3), arguments.at(4).toULongLong());
    const int count = arguments.at(6).toInt();
    if (arguments.at(5) == u"imports") {
        seat.importUntil(count);
    } else {
        constexpr int milliseconds = 1000;
        seat.workMixed(count, QDeadlineTimer(arguments.at(7).toLongLong() * milliseconds));
    }
    return EXIT_SUCCESS;
}
