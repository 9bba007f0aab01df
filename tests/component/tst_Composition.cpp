#include "Closer.h"

#include <oVELDRA/Store.h>
#include <oVELDRA/cloVELDRAMain.h>

#include <QApplication>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <clocale>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

/// A host's own application for one test function.
class HostApplication
{
public:
    HostApplication() : m_application(m_count, m_arguments.data()) {}

private:
    static inline std::array<char, 5> m_name{"host"};
    static inline std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    static inline int m_count = 1;
    QApplication m_application;
};

int numberThrownBy(const std::function<void()>& body)
{
    try {
        body();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

/// Lends the object an empty inputs database.
void connectEmptyInputs(cloVELDRAMain& object)
{
    const QVariant null = QVariant::fromValue(nullptr);
    QVERIFY(object.ConectarDB(QVariant::fromValue(createStore(u"sqlite::memory:"_s, Database::Inputs)), null, null));
}

} // namespace

class tst_Composition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void makesAnApplicationWhenThereIsNone();
    void refusesAnApplicationWithoutWindows();
    void screensOfThisVersionAreInstalled_data();
    void screensOfThisVersionAreInstalled();
    void screensGoWithTheLastObject();
    void screensGoWithTheApplicationAndCallsStaySafe();

private:
    QTemporaryDir m_config;
};

void tst_Composition::initTestCase()
{
    QVERIFY(m_config.isValid());
    qputenv("XDG_CONFIG_HOME", m_config.path().toLocal8Bit());
}

void tst_Composition::makesAnApplicationWhenThereIsNone()
{
    QVERIFY(QCoreApplication::instance() == nullptr);
    const QByteArray numbers = std::setlocale(LC_NUMERIC, nullptr);
    {
        const cloVELDRAMain object;
        QCOMPARE(QByteArray(std::setlocale(LC_NUMERIC, nullptr)), numbers); // the host's own printing is not disturbed
        QVERIFY(qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr);
        QCOMPARE(QCoreApplication::arguments(), QStringList(u"oVELDRA"_s));
    }
    QVERIFY(QCoreApplication::instance() != nullptr); // stays for the next object
    const auto* application = QCoreApplication::instance();
    {
        const cloVELDRAMain object;
        QCOMPARE(QCoreApplication::instance(), application);
    }
    delete application;
}

void tst_Composition::refusesAnApplicationWithoutWindows()
{
    std::array<char, 5> name{"host"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments.data());
    QCOMPARE(numberThrownBy([] { const cloVELDRAMain object; }), 429);
}

void tst_Composition::screensOfThisVersionAreInstalled_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("window");
    QTest::newRow("Importar") << u"Importar"_s << u"frmImportar"_s;
    QTest::newRow("VerINSxSBT") << u"VerINSxSBT"_s << u"frmVerINSxSBT"_s;
    QTest::newRow("Mostrar") << u"Mostrar"_s << u"frmProducto"_s;
    QTest::newRow("MostrarDIT") << u"MostrarDIT"_s << u"frmDIT"_s;
}

void tst_Composition::screensOfThisVersionAreInstalled()
{
    QFETCH(const QString, entry);
    QFETCH(const QString, window);
    const HostApplication application;
    cloVELDRAMain object;
    connectEmptyInputs(object);
    object.put_Interno_Externo(u"I1"_s);
    Closer closer;
    object.invoke(entry, MemberKind::Call);
    // The product list has no catalog yet, so the list of catalogs comes first.
    QCOMPARE(closer.shown.size(), window == u"frmProducto" ? 2 : 1);
    QCOMPARE(closer.boxText, QString());
    QVERIFY(closer.shown.last()); // kept for the next call
    QCOMPARE(closer.shown.last()->objectName(), window);
}

void tst_Composition::screensGoWithTheLastObject()
{
    const HostApplication application;
    Closer closer;
    {
        cloVELDRAMain object;
        connectEmptyInputs(object);
        object.VerINSxSBT();
        QCOMPARE(closer.shown.size(), 1);
        QVERIFY(!closer.shown.first().isNull());
    }
    QVERIFY(closer.shown.first().isNull());
}

void tst_Composition::screensGoWithTheApplicationAndCallsStaySafe()
{
    std::unique_ptr<cloVELDRAMain> object;
    for (int life = 1; life <= 2; ++life) { // a host may end its application and start another
        QPointer<QDialog> screen;
        {
            const HostApplication application;
            object = std::make_unique<cloVELDRAMain>();
            connectEmptyInputs(*object);
            Closer closer;
            object->VerINSxSBT();
            QCOMPARE(closer.shown.size(), 1);
            screen = closer.shown.first();
            QVERIFY(screen);
        }
        QVERIFY(!screen);
        QVERIFY(!object->get_OK());
        object->put_ADUANA(u"001"_s);
        QCOMPARE(numberThrownBy([&] { object->VerINSxSBT(); }), 5);
        QCOMPARE(numberThrownBy([&] { object->ConectarDB({}); }), 5);
        object.reset();
    }
}

QTEST_APPLESS_MAIN(tst_Composition)
#include "tst_Composition.moc"
