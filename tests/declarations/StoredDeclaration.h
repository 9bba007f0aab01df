#pragma once

#include <oVELDRA/Store.h>

#include <core/Component.h>
#include <declarations/ImportarInterno.h>
#include <declarations/frmImportar.h>

#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QString>

#include <memory>

namespace oVELDRA::declarations {

inline qint64 run(ConexionDB& db, const QString& sql)
{
    db.setSql(sql);
    return db.execute();
}

/// An item of a host declaration that is made for a test: `subitems` subitems that share its FOB.
inline void addItem(ConexionDB& host, const QString& interno, int item, int subitems)
{
    const QString key = QLatin1Char('\'') + interno + QStringLiteral("',") + QString::number(item);
    run(host,
        QStringLiteral("insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values (%1,'%2',"
                       "'10','5','0','0')")
            .arg(key)
            .arg(subitems * 10));
    for (int subitem = 1; subitem <= subitems; ++subitem) {
        run(host,
            QStringLiteral("insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,"
                           "NCM,FOB) values (%1,%2,'AC-%3','01','%4','1','7208.90.00.110H','10')")
                .arg(key)
                .arg(subitem)
                .arg(subitem)
                .arg(1 + subitem % 7));
    }
}

/// A host declaration with a header, the "item" 0 that is none, and `items` items.
inline void addDeclaration(ConexionDB& host, const QString& interno, int items, int subitems)
{
    const auto burst = host.beginBurst();
    run(host,
        QStringLiteral("insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values ('%1','1',"
                       "'1','1')")
            .arg(interno));
    run(host,
        QStringLiteral("insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values ('%1',0,"
                       "'0','0','0','0','0')")
            .arg(interno));
    for (int item = 1; item <= items; ++item) {
        addItem(host, interno, item, subitems);
    }
    burst->commit();
}

/// Progress that nobody looks at.
class NoProgress final : public ImportProgress
{
public:
    void limits(int /*minimum*/, int /*maximum*/) override {}
    void advance() override {}
};

/// Imports the declaration of the shared state's interno under a number.
inline QString importStored(core::SharedState& state, const QString& declaration)
{
    NoProgress progress;
    return ImportarInterno(state, progress, state.sInternoExt, declaration, QStringLiteral("15/01/2026"),
                           QStringLiteral("prueba"), QStringLiteral("15/01/2028"), QStringLiteral("073"), 1, false);
}

/// Opens the import screen, fills its boxes with a declaration that can be imported, except for those given, and runs
/// the import. Answers the status line.
inline QString importOnScreen(core::Component& component, const QMap<QString, QString>& boxes)
{
    frmImportar form(component);
    form.Form_Load();
    QMap<QString, QString> texts{{QStringLiteral("txtINTDCL"), QStringLiteral("26073IT14000011A")},
                                 {QStringLiteral("txtINTFOF"), QStringLiteral("15/01/2026")},
                                 {QStringLiteral("txtVEN"), QStringLiteral("15/01/2028")},
                                 {QStringLiteral("txtINTDES"), QStringLiteral("prueba")}};
    texts.insert(boxes);
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        form.findChild<QLineEdit*>(text.key())->setText(text.value());
    }
    form.lp_Procesar();
    return form.findChild<QLabel*>(QStringLiteral("lbTexto"))->text();
}

} // namespace oVELDRA::declarations
