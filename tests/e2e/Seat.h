#pragma once

#include "XDisplay.h"

#include <oVELDRA/Recordset.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <tornel/DataFolder.h>
#include <tuple>

namespace e2e {

/// How long, in milliseconds, anything is waited for on a machine that is busy with everything else.
inline constexpr int patience = 60'000;

/// The title of the host's own window.
[[nodiscard]] const QString& hostTitle();

/// A journey that cannot go on. It says what was waited for.
class JourneyStopped : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A user before a screen of his own with the demonstration host on it, who has nothing but a keyboard.
///
/// Every wait is for a condition and bounded. What fails throws JourneyStopped. A program that is still running when
/// the seat goes is ended.
class Seat
{
public:
    using Surroundings = std::function<QProcessEnvironment(const QProcessEnvironment&)>;

    /// `name` is what the pictures of the screen begin with.
    explicit Seat(QString name);
    ~Seat();
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    /// Starts the screen, and the program on data of its own, the sample of a first start, and waits for its window.
    /// `surroundings` adds to the environment of the program what else it is to find: a print server, for example.
    void sitDown(const Surroundings& surroundings = std::identity());

    /// Presses keys by their X names, one after the other.
    void keys(const QStringList& names) const;
    /// Types a text of plain letters, digits and signs.
    void type(const QString& text) const;
    /// Types a text into the field that has the keyboard and goes on to the next one.
    void fill(const QString& text) const;

    /// Waits until the keyboard has gone over to another window, one of that title.
    void expectWindow(const QString& title);
    /// Whether the keyboard is still where expectWindow() last found it.
    [[nodiscard]] bool isInSameWindow() const;

    /// Keeps what is on the screen, under a name of the journey's. Throws when there is nothing to be seen.
    void shot(const QString& name) const;

    /// Leaves the program from its own window by its own key, and waits until it has ended well.
    void leave();

    /// The rows of a query of the inputs database, read beside the program.
    [[nodiscard]] std::unique_ptr<oVELDRA::Recordset> rows(const QString& statement);
    /// How many there are.
    [[nodiscard]] qsizetype count(const QString& statement);

    /// Which window has the keyboard, and where what is on the screen is kept for those who look into a failure.
    [[nodiscard]] QString situation() const;

    /// Every byte of the inputs database as it is stored now: whatever is written to it changes them.
    [[nodiscard]] QByteArray storedInputs() const;

private:
    [[noreturn]] void stop(const QString& expectation) const;

    QString m_name;
    XDisplay m_display;
    QTemporaryDir m_place;
    tornel::DataFolder m_folder;
    std::shared_ptr<oVELDRA::ConexionDB> m_inputs; ///< read-only, from the first question on
    QProcess m_program;
    QString m_windowId; ///< where the keyboard was found last
};

/// To be called first by a test program: skips it where programs that it needs are not installed, and takes the locale
/// that the demonstration host has, which writes numbers without grouping.
void prepare(const QStringList& missingPrograms);

/// Asks until the answer is the one expected, or patience is at its end, and gives the last answer.
template <typename Ask, typename Answer>
Answer awaited(Ask ask, const Answer& expected)
{
    Answer last;
    // The answer is the result either way.
    std::ignore = QTest::qWaitFor(
        [&] {
            last = ask();
            return last == expected;
        },
        patience);
    return last;
}

/// Runs a journey. Whatever stops it fails the test, and every failure tells the situation at the seat.
template <typename Journey>
void travel(const Seat& seat, Journey journey)
{
    try {
        journey();
    } catch (const std::exception& error) {
        QTest::qFail(error.what(), __FILE__, __LINE__);
    }
    if (QTest::currentTestFailed()) {
        qWarning().noquote() << seat.situation();
    }
}

} // namespace e2e
