// A host that knows only the installed package and Qt Core, and leaves the windows to the component.

#include <oVELDRA/Store.h>
#include <oVELDRA/cloVELDRAMain.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "host: %s\n", what);
        std::exit(1);
    }
}

/// A connection of the host's own making.
class HostConexion final : public oVELDRA::ConexionDB
{
public:
    void setSql(const QString& /*text*/) override {}
    std::unique_ptr<oVELDRA::Recordset> openRecordset(bool& ok) override
    {
        ok = false;
        return nullptr;
    }
    qint64 execute() override { throw oVELDRA::RuntimeError(3709); }
};

} // namespace

int main()
{
    using namespace oVELDRA;

    require(QCoreApplication::instance() == nullptr, "an application from nowhere");
    {
        cloVELDRAMain object;
        require(QCoreApplication::instance() != nullptr, "no application was made");

        const std::shared_ptr<ConexionDB> connection = std::make_shared<HostConexion>();
        const QVariant argument = QVariant::fromValue(connection);
        const QVariant null = QVariant::fromValue(nullptr);
        require(object.ConectarDB(argument, null, null), "the connection was not taken");
        require(connection.use_count() == 3, "the connection is not held"); // here, in the argument, in the component

        object.put_Interno_Externo(QStringLiteral("I1"));
        object.invoke(u"idsub", MemberKind::Put, {123});
        require(!object.get_OK(), "a product was chosen by nobody");

        // An exception of the library is caught here by its own type.
        int number = 0;
        try {
            object.put_IdSUB(QStringLiteral("abc"));
        } catch (const RuntimeError& error) {
            number = error.number();
        }
        require(number == 13, "no type mismatch");

        number = 0;
        try {
            const auto nowhere = connectStore(QStringLiteral("nothing:like/this"));
        } catch (const RuntimeError& error) {
            number = error.number();
        }
        require(number == 5, "an unknown URL was taken");
    }
    std::puts("the host is content");
    return 0;
}
