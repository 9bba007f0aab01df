#include "ImportarInterno.h"

#include <oVELDRA/ConexionDB.h>

#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/SharedState.h>
#include <declarations/CifDistribution.h>
#include <runtime/Dates.h>
#include <runtime/Numbers.h>
#include <runtime/ValueConverter.h>

#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

using core::quoted;
using runtime::toNumber;
using runtime::toText;

constexpr int RaisedError = 1;

/// The rows of a query; null when it cannot be opened.
std::unique_ptr<Recordset> open(ConexionDB& connection, const QString& statement)
{
    bool ok = false;
    connection.setSql(statement);
    std::unique_ptr<Recordset> rows = connection.openRecordset(ok);
    return ok ? std::move(rows) : nullptr;
}

qint64 execute(ConexionDB& connection, const QString& statement)
{
    connection.setSql(statement);
    return connection.execute();
}

/// The error being handled, as a status text.
QString currentErrorStatus()
{
    const RuntimeError error = core::currentError();
    return errorStatus(error.number(), error.description());
}

QString dateLiteral(const QString& text)
{
    const auto date = runtime::parseDate(text);
    return quoted(date ? runtime::FormatDate(*date, u"dd/mm/yyyy") : text);
}

/// The failures that have a status text of their own.
class ImportFailure
{
public:
    explicit ImportFailure(QString status) : m_status(std::move(status)) {}
    [[nodiscard]] const QString& status() const { return m_status; }

private:
    QString m_status;
};

[[noreturn]] void refuse(const QString& description)
{
    throw RuntimeError(RaisedError, description, u"_VerificarIntegridadInterno"_s);
}

/// The one field of a count query, which must be 0.
void requireNone(ConexionDB& connection, const QString& statement, const QString& cannotOpen, const QString& found)
{
    const auto rows = open(connection, statement);
    if (!rows) {
        refuse(cannotOpen);
    }
    if (toNumber(rows->value(u"total")) > 0) {
        refuse(found);
    }
}

/// One run of the import. All texts from outside have become literals before it begins.
class Import
{
public:
    struct Literals
    {
        QString interno;
        QString declaration;
        QString officialDate;
        QString description;
        QString expiry;
        QString customsOffice;
    };

    Import(core::SharedState& state, ImportProgress& progress, Literals literals, qint16 available, bool adjustments)
        : m_host(*state.g_DBTOR), m_inputs(*state.g_DBINS), m_progress(progress), m_literals(std::move(literals)),
          m_available(available), m_adjustments(adjustments)
    {}

    void run()
    {
        readFactors();
        insertHeader();
        importItems();
    }

    /// Deletes what run() inserted. What fails here is not told: the user hears of the failure that led to it.
    void undo() noexcept
    {
        for (const QString& statement : {QString(u"delete from INTINS where INTNRO = "_s + m_literals.interno +
                                                 u" and INTDCL = "_s + m_literals.declaration),
                                         QString(u"delete from INS where INTDCL = "_s + m_literals.declaration)}) {
            try {
                execute(m_inputs, statement);
            } catch (...) {
                continue; // the other one still counts
            }
        }
    }

private:
    void readFactors()
    {
        const auto rows =
            open(m_host, u"select fobdivcambio, fletedivcambio, segurodivcambio from caratula where interno = "_s +
                             m_literals.interno);
        if (rows) {
            m_factors.fob = toNumber(rows->value(u"fobdivcambio"));
            m_factors.freight = toNumber(rows->value(u"fletedivcambio"));
            m_factors.insurance = toNumber(rows->value(u"segurodivcambio"));
        }
    }

    void insertHeader()
    {
        const QString statement = u"insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK) values ("_s +
                                  m_literals.interno + u',' + m_literals.declaration + u",datevalue("_s +
                                  m_literals.officialDate + u"),"_s + m_literals.description + u",datevalue("_s +
                                  m_literals.expiry + u"),"_s + m_literals.customsOffice + u',' +
                                  QString::number(m_available) + u')';
        if (execute(m_inputs, statement) == 0) {
            throw ImportFailure(u"ER Error, no se agrego el interno a stock"_s);
        }
    }

    void importItems()
    {
        const auto items =
            open(m_host, u"select id,FobTotal,itflete,itseguro,ajusteinc,ajusteded  from item where interno = "_s +
                             m_literals.interno + u" and id<>0 order by id"_s);
        if (!items) {
            throw ImportFailure(u"ER Error en acceder a los Item's del despacho"_s);
        }
        const int count = static_cast<int>(items->recordCount());
        if (count == 1) {
            m_progress.limits(0, 1);
        } else if (count > 1) {
            m_progress.limits(1, count);
        }
        for (; !items->atEof(); items->moveNext()) {
            importItem(*items);
            m_progress.advance();
        }
    }

    void importItem(const Recordset& item)
    {
        const ItemAmounts amounts{.fob = toNumber(item.value(u"FobTotal")),
                                  .freight = toNumber(item.value(u"itflete")),
                                  .insurance = toNumber(item.value(u"itseguro")),
                                  .increments = toNumber(item.value(u"ajusteinc")),
                                  .deductions = toNumber(item.value(u"ajusteded"))};
        const double id = toNumber(item.value(u"id"));
        const QString number = runtime::Format(id, u"000", m_separators);
        ItemValues values = itemValues(amounts, m_factors, m_adjustments);
        const auto subitems = open(
            m_host,
            u"select IDARTICULO, IDUNIDAD, CANTIDAD, PRECIOUNITARIO, NCM, FOB from groupsubitems where interno = "_s +
                m_literals.interno + u" and id = "_s + runtime::CStr(id, m_separators) + u" order by idsub"_s);
        if (!subitems) {
            throw ImportFailure(u"ER No hay articulos en el item "_s + number);
        }
        const qsizetype count = subitems->recordCount();
        if (count != 1) {
            values = forSharing(values);
        }
        for (qsizetype position = 1; !subitems->atEof(); subitems->moveNext(), ++position) {
            const double quantity = toNumber(subitems->value(u"CANTIDAD"));
            const double cif =
                count == 1 ? values.cif : sharedCif(toNumber(subitems->value(u"FOB")), m_factors, values);
            insertArticle(*subitems, quantity, unitValue(cif, quantity), number, subitemNumber(position, count));
        }
    }

    void insertArticle(const Recordset& subitem, double quantity, double price, const QString& item,
                       const QString& number)
    {
        const QString quantityText = runtime::CStr(quantity, m_separators);
        const QString statement =
            u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values ("_s +
            m_literals.declaration + u',' + quoted(toText(subitem.value(u"IDARTICULO"))) + u',' +
            quoted(toText(subitem.value(u"IDUNIDAD"))) + u",'" + quantityText + u"','" +
            runtime::CStr(price, m_separators) + u"','" + quantityText + u"'," + quoted(toText(subitem.value(u"NCM"))) +
            u",'" + item + u"','" + number + u"')";
        execute(m_inputs, statement);
    }

    ConexionDB& m_host;
    ConexionDB& m_inputs;
    ImportProgress& m_progress;
    Literals m_literals;
    qint16 m_available;
    bool m_adjustments;
    ExchangeFactors m_factors;
    runtime::Separators m_separators = runtime::Separators::current(); ///< asked for once: there are many rows
};

} // namespace

QString errorStatus(int number, const QString& description)
{
    return u"ER ERROR %1 - %2"_s.arg(QString::number(number), description);
}

QString _VerificarIntegridadInterno(core::SharedState& state, const QString& declaration)
{
    try {
        const QString interno = quoted(state.sInternoExt);
        const QString cannotOpen = u"Error en acceder a los articulos"_s;
        const QString withoutCode =
            u"Se encontraron subitem's sin Codigo de Articulo o , esto impedira su descuento como insumo."_s;
        requireNone(*state.g_DBTOR,
                    u"select count(idarticulo) as Total from groupsubitems where interno = "_s + interno +
                        u"  and ( idarticulo is null or  idarticulo = '' or  idarticulo = 'agrupado!') "_s,
                    cannotOpen, withoutCode);
        // Counting a column passes over its Nulls, and a subitem whose code is Null must not come in either.
        requireNone(*state.g_DBTOR,
                    u"select count(*) as Total from groupsubitems where interno = "_s + interno +
                        u" and idarticulo is null"_s,
                    cannotOpen, withoutCode);
        requireNone(
            *state.g_DBINS, u"select count(INTDCL) as Total from INTINS where INTDCL = "_s + quoted(declaration),
            u"Error en acceder al Stock de insumos"_s, u"El número de Declaración ya esta en la base de datos"_s);
        return u"OK Verificar Integridad OK"_s;
    } catch (...) {
        return currentErrorStatus();
    }
}

QString ImportarInterno(core::SharedState& state, ImportProgress& progress, const QString& interno,
                        const QString& declaration, const QString& officialDate, const QString& description,
                        const QString& expiry, const QString& customsOffice, qint16 available, bool adjustments)
{
    std::unique_ptr<WriteBurst> burst;
    std::optional<Import> import; // only from here on there is something to undo
    QString status;
    try {
        Import::Literals literals{.interno = quoted(interno),
                                  .declaration = quoted(declaration),
                                  .officialDate = dateLiteral(officialDate),
                                  .description = quoted(description),
                                  .expiry = dateLiteral(expiry),
                                  .customsOffice = quoted(customsOffice)};
        burst = state.g_DBINS->beginBurst();
        import.emplace(state, progress, std::move(literals), available, adjustments);
        import->run();
        burst->commit();
        return u"OK"_s;
    } catch (const ImportFailure& failure) {
        status = failure.status();
    } catch (...) {
        status = currentErrorStatus();
    }
    if (import) {
        import->undo();
    }
    return status;
}

} // namespace oVELDRA::declarations
