#pragma once

#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/Form.h>
#include <listings/Printing.h>

#include <QAccessible>
#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace oVELDRA::access {

/// A control that the Tab key reaches.
struct Stop
{
    QString name;
    QString caption; ///< what the user calls it: the text of its label, or its own
    QAccessible::Role role;
};

/// A screen over a database that has two rows of everything, the second one marked in red wherever rows can be.
class ScreenUnderTest
{
public:
    using Maker = std::function<std::unique_ptr<controls::Form>(ScreenUnderTest&)>;

    explicit ScreenUnderTest(const Maker& make);
    ScreenUnderTest(const ScreenUnderTest&) = delete;
    ScreenUnderTest& operator=(const ScreenUnderTest&) = delete;
    ~ScreenUnderTest();

    [[nodiscard]] controls::Form& form() const { return *m_form; }
    [[nodiscard]] QWidget& control(const QString& name) const;
    /// Shows the screen as its entry operation does, acts on it, and closes it.
    void whileOpen(const std::function<void()>& actions);

    doubles::TestComponent component;
    std::shared_ptr<doubles::FakeConexionDB> database = std::make_shared<doubles::FakeConexionDB>();
    std::unique_ptr<listings::Printers> printers;
    std::unique_ptr<listings::Spooler> spooler;

private:
    std::unique_ptr<controls::Form> m_form;
};

struct ScreenCase
{
    QString name;
    ScreenUnderTest::Maker make;
    QList<Stop> stops; ///< in the order of reading, which is the order of Tab
    QString list;      ///< its list, if it has one
};

[[nodiscard]] const QList<ScreenCase>& everyScreen();
[[nodiscard]] const ScreenCase& screenCase(const QString& name);

/// One row per screen; the column is `screen`.
void addScreens();
/// One row per screen and theme (`screen`, `dark`).
void addScreensAndThemes();

/// The colours of the application for as long as it lives: those of the style, or a dark theme's.
class Theme
{
public:
    explicit Theme(bool dark);
    Theme(const Theme&) = delete;
    Theme& operator=(const Theme&) = delete;
    ~Theme();

private:
    QPalette m_before;
};

/// The application's font, `factor` times as large as before, for as long as it lives.
class FontSize
{
public:
    explicit FontSize(double factor);
    FontSize(const FontSize&) = delete;
    FontSize& operator=(const FontSize&) = delete;
    ~FontSize();

private:
    QFont m_before;
};

} // namespace oVELDRA::access
