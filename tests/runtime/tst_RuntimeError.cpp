#include <oVELDRA/RuntimeError.h>

#include <QTest>

using namespace Qt::StringLiterals;
using oVELDRA::RuntimeError;

class tst_RuntimeError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberHasItsDescription_data();
    void numberHasItsDescription();
    void ownTextSourceAndNativeNumber();
    void whatIsUtf8();
    void isCaughtAsStandardException();
    void copyKeepsEverything();
};

void tst_RuntimeError::numberHasItsDescription_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");

    QTest::newRow("5") << 5 << u"Argumento o llamada a procedimiento no válidos"_s;
    QTest::newRow("6") << 6 << u"Desbordamiento"_s;
    QTest::newRow("7") << 7 << u"Memoria insuficiente"_s;
    QTest::newRow("9") << 9 << u"El subíndice está fuera del intervalo"_s;
    QTest::newRow("11") << 11 << u"División por cero"_s;
    QTest::newRow("13") << 13 << u"No coinciden los tipos"_s;
    QTest::newRow("91") << 91 << u"Variable de objeto o bloque With no establecido"_s;
    QTest::newRow("94") << 94 << u"Uso no válido de Null"_s;
    QTest::newRow("380") << 380 << u"El valor de la propiedad no es válido"_s;
    QTest::newRow("400") << 400 << u"El formulario ya se está mostrando; no se puede mostrar en forma modal"_s;
    QTest::newRow("424") << 424 << u"Se requiere un objeto"_s;
    QTest::newRow("430") << 430 << u"La clase no acepta Automatización o no acepta la interfaz esperada"_s;
    QTest::newRow("438") << 438 << u"El objeto no admite esta propiedad o método"_s;
    QTest::newRow("450") << 450
                         << u"El número de argumentos es incorrecto o la asignación de la propiedad no es válida"_s;
    QTest::newRow("3021") << 3021
                          << u"El valor de BOF o EOF es True, o el actual registro se eliminó; la operación "
                             u"solicitada requiere un registro actual."_s;
    QTest::newRow("3265")
        << 3265 << u"No se encontró el elemento en la colección que corresponde al nombre o el ordinal solicitado."_s;
    QTest::newRow("3709") << 3709
                          << u"La conexión no se puede usar para realizar esta operación. Está cerrada o no es válida "
                             u"en este contexto."_s;
    QTest::newRow("unknown column") << -2147217904
                                    << u"No se han especificado valores para algunos de los parámetros requeridos."_s;
    QTest::newRow("types of a criterion")
        << -2147217913 << u"No coinciden los tipos de datos en la expresión de criterios."_s;
    QTest::newRow("no text of its own") << 1234 << u"Error definido por la aplicación o el objeto"_s;
    QTest::newRow("application error") << -2147221504 << u"Error definido por la aplicación o el objeto"_s;
}

void tst_RuntimeError::numberHasItsDescription()
{
    QFETCH(const int, number);
    const RuntimeError error(number);
    QCOMPARE(error.number(), number);
    QTEST(error.description(), "description");
    QVERIFY(error.source().isEmpty());
    QCOMPARE(error.nativeNumber(), 0);
}

void tst_RuntimeError::ownTextSourceAndNativeNumber()
{
    const RuntimeError error(-2147467259, u"Disco lleno"_s, u"almacén"_s, 3026);
    QCOMPARE(error.number(), -2147467259);
    QCOMPARE(error.description(), u"Disco lleno"_s);
    QCOMPARE(error.source(), u"almacén"_s);
    QCOMPARE(error.nativeNumber(), 3026);
}

void tst_RuntimeError::whatIsUtf8()
{
    QCOMPARE(QString::fromUtf8(RuntimeError(11).what()), u"11 - División por cero"_s);
}

void tst_RuntimeError::isCaughtAsStandardException()
{
    try {
        throw RuntimeError(13);
    } catch (const std::exception& error) {
        QCOMPARE(QString::fromUtf8(error.what()), u"13 - No coinciden los tipos"_s);
    }
}

void tst_RuntimeError::copyKeepsEverything()
{
    RuntimeError copy(5);
    {
        const RuntimeError original(7, u"texto"_s, u"origen"_s, 8);
        copy = original;
    }
    QCOMPARE(copy.number(), 7);
    QCOMPARE(copy.description(), u"texto"_s);
    QCOMPARE(copy.source(), u"origen"_s);
    QCOMPARE(copy.nativeNumber(), 8);
    QCOMPARE(QString::fromUtf8(copy.what()), u"7 - texto"_s);
}

QTEST_GUILESS_MAIN(tst_RuntimeError)
#include "tst_RuntimeError.moc"
