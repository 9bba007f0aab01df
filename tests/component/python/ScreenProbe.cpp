// What is on the screen, for a test in another language that runs in the same process: loaded beside the component, it
// looks at the windows on their own thread, while the test's keyboard plays on another one.

#include <QApplication>
#include <QDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMessageBox>
#include <QSemaphore>
#include <QTreeView>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30'000; ///< milliseconds

struct Answer
{
    QByteArray text;
    QSemaphore ready;
};

QJsonArray rowsOf(const QTreeView& list)
{
    const QAbstractItemModel* model = list.model();
    QJsonArray rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        QJsonArray cells;
        for (int column = 0; column < model->columnCount(); ++column) {
            cells.append(model->index(row, column).data().toString());
        }
        rows.append(cells);
    }
    return rows;
}

/// The window that the user has to do with; an empty object when there is none.
QJsonObject screen()
{
    const QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr) {
        return {};
    }
    QJsonObject seen{{u"window"_s, window->objectName()},
                     {u"title"_s, window->windowTitle()},
                     {u"active"_s, window->isActiveWindow()}};
    if (const QWidget* focus = QApplication::focusWidget(); focus != nullptr) {
        seen.insert(u"focus"_s, focus->objectName());
    }
    if (const auto* box = qobject_cast<const QMessageBox*>(window); box != nullptr) {
        seen.insert(u"box"_s, box->text());
        seen.insert(u"icon"_s, static_cast<int>(box->icon()));
    }
    QJsonObject labels;
    const auto allLabels = window->findChildren<const QLabel*>();
    for (const QLabel* label : allLabels) {
        labels.insert(label->objectName(), label->text());
    }
    seen.insert(u"labels"_s, labels);
    QJsonObject lists;
    const auto allLists = window->findChildren<const QTreeView*>();
    for (const QTreeView* list : allLists) {
        lists.insert(list->objectName(), rowsOf(*list));
    }
    seen.insert(u"lists"_s, lists);
    return seen;
}

} // namespace

/// The screen as JSON; the text lasts until the calling thread's next call. Null when the windows' thread does not
/// answer or there is none yet.
extern "C" Q_DECL_EXPORT const char* probe_screen()
{
    thread_local QByteArray last;
    if (QCoreApplication::instance() == nullptr) {
        return nullptr;
    }
    const auto answer = std::make_shared<Answer>();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [answer] {
            answer->text = QJsonDocument(screen()).toJson(QJsonDocument::Compact);
            answer->ready.release();
        },
        Qt::QueuedConnection);
    if (!answer->ready.tryAcquire(1, patience)) {
        return nullptr;
    }
    last = answer->text;
    return last.constData();
}

/// Closes the window that the user has to do with: a test that has failed must not wait for ever.
extern "C" Q_DECL_EXPORT void probe_close()
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()); dialog != nullptr) {
                dialog->reject();
            }
        },
        Qt::QueuedConnection);
}
