#pragma once

#include <oVELDRA/Store.h>

#include <QString>
#include <QThread>

#include <atomic>
#include <memory>

namespace oVELDRA::data {

/// The articles of each declaration that fill() and BusySeat write.
inline constexpr int articlesEach = 60;

/// The rows of a table; -1 when it cannot be read.
[[nodiscard]] qint64 count(ConexionDB& connection, const QString& table);

/// One more declaration with its articles, as the import writes them: all or nothing.
void importOne(ConexionDB& connection, qint64 number, int articles);

/// Declarations 1 to that number.
void fill(ConexionDB& connection, int declarations);

/// Another seat that imports without a pause, in a thread of its own.
class BusySeat
{
public:
    explicit BusySeat(const QString& url, qint64 firstNumber)
        : m_thread(QThread::create([this, url, firstNumber] {
              const auto connection = connectStore(url);
              for (qint64 number = firstNumber; !m_enough; ++number) {
                  importOne(*connection, number, articlesEach);
                  ++m_imports;
              }
          }))
    {
        m_thread->start();
    }
    BusySeat(const BusySeat&) = delete;
    BusySeat& operator=(const BusySeat&) = delete;
    ~BusySeat()
    {
        m_enough = true;
        m_thread->wait();
    }
    [[nodiscard]] int imports() const { return m_imports; }

private:
    std::atomic<bool> m_enough = false;
    std::atomic<int> m_imports = 0;
    std::unique_ptr<QThread> m_thread;
};

} // namespace oVELDRA::data
