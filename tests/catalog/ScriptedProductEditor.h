#pragma once

#include "catalog/ProductEditor.h"

namespace oVELDRA::catalog {

/// How the statements begin that the editor counts products and lists inputs with.
inline const QString countQuery = QStringLiteral("select count(PRDNRO) as Total");
inline const QString listQuery = QStringLiteral("select ARTNRO, RPADES, RIPCAN from RIP");
/// The whole statement for the product that the script knows.
inline const QString listOfPM001 = listQuery + QStringLiteral(" where PRDNRO = 'PM001' and CATNRO = 'MOTORES'");

inline const QStringList productColumns =
    QStringLiteral("CATNRO PRDNRO PRDDES PRDNCM PRDMUL PRDUNI PRDPRE PRDSUF PRDPAI PRDKGU").split(QLatin1Char(' '));
inline const QStringList inputColumns = QStringLiteral("ARTNRO RPADES RIPCAN").split(QLatin1Char(' '));

/// The product editor over a script in which everything succeeds unless a test says otherwise.
class ScriptedProductEditor : public ProductEditor
{
public:
    explicit ScriptedProductEditor(bool modifying = false)
    {
        inputs->willGiveRows(countQuery, {QStringLiteral("Total")}, {{modifying ? 1 : 0}});
        inputs->willGiveRows(QStringLiteral("select * from PRD"), productColumns,
                             {{QStringLiteral("MOTORES"), QStringLiteral("PM001"), QStringLiteral("Motor"),
                               QStringLiteral("8501.10.19.000A"), 2.5, QStringLiteral("07"), 3.5,
                               QStringLiteral("ZC(000150)-"), QStringLiteral("200"), 1.25}});
        inputs->willGiveRows(listQuery, inputColumns,
                             {{QStringLiteral("AC-1"), QStringLiteral("Chapa"), 1.5},
                              {QStringLiteral("AC-2"), QStringLiteral("Bulon"), 12}});
        inputs->willAffect(QStringLiteral("insert into PRD"), 1);
        inputs->willAffect(QStringLiteral("update PRD"), 1);
        inputs->willAffect(QStringLiteral("delete from RIP"), 1);
        if (modifying) {
            modify(QStringLiteral("PM001"));
        }
    }

    /// Opens the editor, saves the product, and lets `actions` go on from there.
    bool afterSaving(const std::function<void()>& actions)
    {
        return controls::whileOpen(form, [&] {
            if (!state().productModify) {
                fillIn();
            }
            controls::pressKey(Qt::Key_F11);
            QVERIFY(boxes().isEmpty());
            QVERIFY(state().productSaved);
            inputs->clear();
            actions();
        });
    }
};

} // namespace oVELDRA::catalog
