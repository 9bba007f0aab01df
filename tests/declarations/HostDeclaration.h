#pragma once

#include "doubles/FakeConexionDB.h"

#include <core/SharedState.h>

#include <memory>

namespace oVELDRA::declarations {

/// One scripted connection that is both the host's and the inputs' database, so that it notes all statements in their
/// order. It holds the declaration INT-1 with two items: the first has one subitem, the second two.
class HostDeclaration
{
public:
    static inline const QStringList itemColumns{QStringLiteral("id"),        QStringLiteral("FobTotal"),
                                                QStringLiteral("itflete"),   QStringLiteral("itseguro"),
                                                QStringLiteral("ajusteinc"), QStringLiteral("ajusteded")};
    static inline const QStringList subitemColumns{QStringLiteral("IDARTICULO"), QStringLiteral("IDUNIDAD"),
                                                   QStringLiteral("CANTIDAD"),   QStringLiteral("PRECIOUNITARIO"),
                                                   QStringLiteral("NCM"),        QStringLiteral("FOB")};
    static inline const QString factors = QStringLiteral("select fobdivcambio");
    static inline const QString items = QStringLiteral("select id,FobTotal");
    static inline const QString header = QStringLiteral("insert into INTINS");
    static inline const QString article = QStringLiteral("insert into INS ");
    static inline const QString withoutCode = QStringLiteral("select count(idarticulo)");
    static inline const QString nullCode = QStringLiteral("select count(*)");
    static inline const QString sameNumber = QStringLiteral("select count(INTDCL)");

    /// The query of an item's subitems.
    [[nodiscard]] static QString subitems(int item)
    {
        return QStringLiteral(
                   "select IDARTICULO, IDUNIDAD, CANTIDAD, PRECIOUNITARIO, NCM, FOB from groupsubitems where "
                   "interno = 'INT-1' and id = %1 order by idsub")
            .arg(item);
    }

    explicit HostDeclaration(core::SharedState& state)
    {
        state.g_DBTOR.assign(db);
        state.g_DBINS.assign(db);
        state.sInternoExt = QStringLiteral("INT-1");
        state.g_sAduana = QStringLiteral("001");
        db->willGiveRows(withoutCode, {QStringLiteral("Total")}, {{0}});
        db->willGiveRows(nullCode, {QStringLiteral("Total")}, {{0}});
        db->willGiveRows(sameNumber, {QStringLiteral("Total")}, {{0}});
        db->willGiveRows(
            factors,
            {QStringLiteral("fobdivcambio"), QStringLiteral("fletedivcambio"), QStringLiteral("segurodivcambio")},
            {{1.0, 1.0, 1.0}});
        db->willAffect(header, 1);
        db->willGiveRows(items, itemColumns, {{1, 100.0, 10.0, 5.0, 7.0, 2.0}, {2, 100.0, 10.0, 5.0, 0.0, 0.0}});
        db->willGiveRows(subitems(1), subitemColumns,
                         {{QStringLiteral("ART1"), QStringLiteral("KG"), 3.0, 9.0, QStringLiteral("8471"), 100.0}});
        db->willGiveRows(subitems(2), subitemColumns,
                         {{QStringLiteral("ART2"), QStringLiteral("UN"), 3.0, 9.0, QStringLiteral("8472"), 60.0},
                          {QStringLiteral("ART3"), QStringLiteral("UN"), 2.0, 9.0, QStringLiteral("8473"), 40.0}});
        db->willAffect(article, 1);
        db->willAffect(QStringLiteral("delete from"), 1);
    }

    std::shared_ptr<doubles::FakeConexionDB> db = std::make_shared<doubles::FakeConexionDB>();
};

/// Texts that a user or a host could pass to harm a statement. None has an apostrophe.
[[nodiscard]] inline QStringList hostileTexts()
{
    return {QStringLiteral("\"x\""),
            QStringLiteral("x; delete from INS"),
            QStringLiteral("x -- y"),
            QStringLiteral("/* x */"),
            QStringLiteral("%1 %2 %3"),
            QStringLiteral("a\tb\r\nc"),
            QString(QChar(u'\x01')) + QChar(u'\x7f'),
            QString(QChar(u'\0')),
            QStringLiteral("\U0001F6A2 \u00d1and\u00fa \u202e"),
            QString(10'000, QLatin1Char('x'))};
}

} // namespace oVELDRA::declarations
