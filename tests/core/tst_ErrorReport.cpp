#include "doubles/RecordedPrompts.h"

#include <core/ErrorReport.h>

#include <QTest>

#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;

namespace {

constexpr QStringView place = u"Sección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]";

} // namespace

class tst_ErrorReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layoutWithNumberFirst();
    void layoutWithDescriptionFirst();
    void locationsKeepTheirOwnSpelling_data();
    void locationsKeepTheirOwnSpelling();
    void applicationErrorNumberIsNegative();
    void reportIsOneCriticalBoxWithoutTitle();
    void trapIsTrueWithoutError();
    void trapReportsARuntimeErrorOnce();
    void trapReportsErrorsOfTheLibrary_data();
    void trapReportsErrorsOfTheLibrary();
};

void tst_ErrorReport::layoutWithNumberFirst()
{
    QCOMPARE(core::errorText(RuntimeError(3021, u"D"_s), place),
             u"3021 - D\r\n\r\nSección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]"_s);
}

void tst_ErrorReport::layoutWithDescriptionFirst()
{
    QCOMPARE(core::errorText(RuntimeError(3021, u"D"_s), u" - Sección [oVELDRA.frmABMCatalogo.lp_Mostrar_Catalogo]"),
             u"D\r\n\r\n3021 - Sección [oVELDRA.frmABMCatalogo.lp_Mostrar_Catalogo]"_s);
}

void tst_ErrorReport::locationsKeepTheirOwnSpelling_data()
{
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lower case, no accent, colons")
        << u"seccion [oveldra.x.y] ::"_s << u"5 - D\r\n\r\nseccion [oveldra.x.y] ::"_s;
    QTest::newRow("hyphen without its blank in front")
        << u"- Sección [oVELDRA.x.y]"_s << u"5 - D\r\n\r\n- Sección [oVELDRA.x.y]"_s;
    QTest::newRow("hyphen in front, no accent, colons")
        << u" - Seccion [oVELDRA.x.y]::"_s << u"D\r\n\r\n5 - Seccion [oVELDRA.x.y]::"_s;
}

void tst_ErrorReport::locationsKeepTheirOwnSpelling()
{
    QFETCH(const QString, location);
    QTEST(core::errorText(RuntimeError(5, u"D"_s), location), "expected");
}

void tst_ErrorReport::applicationErrorNumberIsNegative()
{
    QVERIFY(core::errorText(RuntimeError(-2147221504, u"D"_s), place).startsWith(u"-2147221504 - D\r\n"_s));
}

void tst_ErrorReport::reportIsOneCriticalBoxWithoutTitle()
{
    RecordedPrompts prompts;
    core::reportError(prompts, RuntimeError(13), place);
    QCOMPARE(prompts.boxes(),
             (QList{RecordedPrompts::Box{
                 u"13 - No coinciden los tipos\r\n\r\nSección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]"_s,
                 core::CriticalBox,
                 {}}}));
}

void tst_ErrorReport::trapIsTrueWithoutError()
{
    RecordedPrompts prompts;
    bool run = false;
    QVERIFY(core::trap(prompts, place, [&] { run = true; }));
    QVERIFY(run);
    QVERIFY(prompts.boxes().isEmpty());
}

void tst_ErrorReport::trapReportsARuntimeErrorOnce()
{
    RecordedPrompts prompts;
    const auto fail = [] { throw RuntimeError(3021, u"D"_s); };
    bool after = false;
    QVERIFY(!core::trap(prompts, place, [&] {
        fail();
        after = true;
    }));
    QVERIFY(!after);
    QCOMPARE(prompts.texts(), QStringList(u"3021 - D\r\n\r\nSección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]"_s));
}

void tst_ErrorReport::trapReportsErrorsOfTheLibrary_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QString>("firstLine");
    QTest::newRow("out of memory") << 0 << u"7 - Memoria insuficiente"_s;
    QTest::newRow("another exception") << 1 << u"5 - broken"_s;
    QTest::newRow("no exception class") << 2 << u"5 - Argumento o llamada a procedimiento no válidos"_s;
}

void tst_ErrorReport::trapReportsErrorsOfTheLibrary()
{
    QFETCH(const int, which);
    QFETCH(const QString, firstLine);
    RecordedPrompts prompts;
    QVERIFY(!core::trap(prompts, place, [which] {
        switch (which) {
        case 0:
            throw std::bad_alloc();
        case 1:
            throw std::runtime_error("broken");
        default:
            throw 42;
        }
    }));
    QCOMPARE(prompts.texts(), QStringList(QString(firstLine + u"\r\n\r\n"_s + place)));
}

QTEST_MAIN(tst_ErrorReport)
#include "tst_ErrorReport.moc"
