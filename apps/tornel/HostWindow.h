#pragma once

#include "HostSession.h"

#include <QMainWindow>

#include <array>

class QAction;
class QLabel;
class QLineEdit;
class QStandardItemModel;
class QTableView;

namespace tornel {

/// The program's name as its windows show it. It is not given to the application, because some platforms would put it
/// behind the title of every window, those of the component included.
[[nodiscard]] QString hostTitle();

/// The host's window: its context, its declarations, and the entry operations of the component.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The session is not owned and must outlive the window.
    HostWindow(HostSession& session, const QString& dataFolder, QWidget* parent = nullptr);

private:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// Reads the lists for the first time: when the window has been painted, so that it is seen at once.
    void fillLists();
    void makeSelectionClear();
    [[nodiscard]] QWidget* makeContext();
    [[nodiscard]] QWidget* makeOperations();
    [[nodiscard]] QWidget* makeLists();
    [[nodiscard]] QWidget* makeResult();
    void makeMenus();

    [[nodiscard]] QAction* makeOperation(Operation operation, const QString& caption, Qt::Key key, const QString& tip);
    void run(Operation operation);
    void reloadLists();
    void showProduct();
    void takeDeclaration(int row);
    void takeExport(int row);

    HostSession& m_session;
    bool m_filled = false;
    bool m_reloading = false; ///< rows that come back must not change the context
    QLineEdit* m_interno = nullptr;
    QLineEdit* m_customs = nullptr;
    QLineEdit* m_subitem = nullptr;
    std::array<QAction*, 4> m_operations{};
    QTableView* m_declarations = nullptr;
    QStandardItemModel* m_declarationRows = nullptr;
    QTableView* m_exports = nullptr;
    QStandardItemModel* m_exportRows = nullptr;
    std::array<QLabel*, 9> m_result{};
};

} // namespace tornel
