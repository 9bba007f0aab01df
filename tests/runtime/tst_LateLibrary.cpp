#include <oVELDRA/RuntimeError.h>

#include <runtime/LateLibrary.h>

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using oVELDRA::RuntimeError;
using oVELDRA::runtime::LateLibrary;

class tst_LateLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFunctionIsTakenAndOutlivesTheObject();
    void aMissingLibraryIsNamed();
    void aMissingFunctionIsNamed();
};

void tst_LateLibrary::aFunctionIsTakenAndOutlivesTheObject()
{
    double (*cosine)(double) = nullptr;
    {
        LateLibrary mathematics(u"m"_s, 6);
        mathematics.take(cosine, "cos");
    }
    QCOMPARE(cosine(0), 1.0);
}

void tst_LateLibrary::aMissingLibraryIsNamed()
{
    LateLibrary library(u"oveldra_no_such"_s, 7);
    void (*function)() = nullptr;
    try {
        library.take(function, "anything");
        QFAIL("a library from nowhere");
    } catch (const RuntimeError& error) {
        QCOMPARE(error.number(), 53);
        QVERIFY2(error.description().contains(u"oveldra_no_such"), qPrintable(error.description()));
    }
    QVERIFY(function == nullptr);
}

void tst_LateLibrary::aMissingFunctionIsNamed()
{
    LateLibrary mathematics(u"m"_s, 6);
    void (*function)() = nullptr;
    try {
        mathematics.take(function, "oveldra_no_such");
        QFAIL("a function from nowhere");
    } catch (const RuntimeError& error) {
        QCOMPARE(error.number(), 53);
        QVERIFY2(error.description().contains(u"oveldra_no_such"), qPrintable(error.description()));
    }
}

QTEST_GUILESS_MAIN(tst_LateLibrary)
#include "tst_LateLibrary.moc"
