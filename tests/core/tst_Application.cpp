#include <core/Application.h>

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QWidget>

#include <array>
#include <memory>
#include <thread>

using namespace oVELDRA;

/// The application that the component makes for hosts that know nothing of Qt.
class tst_Application : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOwnApplicationEndsAndAnotherCanBeMade();
    void anotherThreadDoesNotEndIt();
    void theHostsApplicationIsLeftAlone();
};

void tst_Application::theOwnApplicationEndsAndAnotherCanBeMade()
{
    QVERIFY(core::endOwnApplication()); // there is none yet
    for (int round = 0; round < 2; ++round) {
        core::ensureApplication();
        const QPointer<QCoreApplication> application = QCoreApplication::instance();
        QVERIFY(application);
        {
            QWidget window;
            window.show();
            QVERIFY(window.isVisible());
        }
        QVERIFY(core::endOwnApplication());
        QVERIFY(!application);
        QVERIFY(QCoreApplication::instance() == nullptr);
    }
}

void tst_Application::anotherThreadDoesNotEndIt()
{
    core::ensureApplication();
    bool ended = true;
    std::thread([&ended] { ended = core::endOwnApplication(); }).join();
    QVERIFY(!ended);
    QVERIFY(QCoreApplication::instance() != nullptr);
    QVERIFY(core::endOwnApplication());
}

void tst_Application::theHostsApplicationIsLeftAlone()
{
    int count = 1;
    std::array<char, 5> name{"host"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    const auto host = std::make_unique<QApplication>(count, arguments.data());
    core::ensureApplication();
    QVERIFY(core::endOwnApplication());
    QCOMPARE(QCoreApplication::instance(), host.get());
}

QTEST_APPLESS_MAIN(tst_Application)
#include "tst_Application.moc"
