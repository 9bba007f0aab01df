#pragma once

#include <oVELDRA/ConexionDB.h>
#include <oVELDRA/Export.h>

#include <QString>
#include <QVariant>
#include <QVariantList>

namespace oVELDRA {

namespace core {
class Component;
} // namespace core

/// The interface of the component's class, members in the order of their slots.
class OVELDRA_EXPORT _cloVELDRAMain
{
public:
    _cloVELDRAMain() = default;
    _cloVELDRAMain(const _cloVELDRAMain&) = delete;
    _cloVELDRAMain& operator=(const _cloVELDRAMain&) = delete;
    virtual ~_cloVELDRAMain();

    /// True once the user picked a product in Mostrar().
    [[nodiscard]] virtual bool get_OK() const = 0;
    [[nodiscard]] virtual QString get_CATNRO() const = 0;
    [[nodiscard]] virtual QString get_PRDDES() const = 0;
    [[nodiscard]] virtual QString get_PRDNCM() const = 0;
    [[nodiscard]] virtual QString get_PRDPAI() const = 0;
    [[nodiscard]] virtual double get_PRDPRE() const = 0;
    [[nodiscard]] virtual QString get_PRDSUF() const = 0;
    [[nodiscard]] virtual QString get_PRDUNI() const = 0;
    /// The three paths are kept and used by nothing.
    virtual void put_BaseNcm(const QString& path) = 0;
    virtual void put_BaseTornel(const QString& path) = 0;
    virtual void put_BaseInsumos(const QString& path) = 0;
    /// The host's internal file number of the declaration to work on.
    virtual void put_Interno_Externo(const QString& interno) = 0;
    /// The three connections: the inputs database, the nomenclature and the host's own.
    ///
    /// A connection travels as `QVariant::fromValue(std::shared_ptr<ConexionDB>)`, Null as
    /// `QVariant::fromValue(nullptr)`, an omitted argument as an invalid QVariant. Null leaves the previous connection
    /// of its kind in place; an omitted argument is no Null: it is reported to the user and the answer is False, with
    /// what was assigned before kept.
    virtual bool ConectarDB(const QVariant& po_DBINS, const QVariant& po_DBNCM = {}, const QVariant& po_DBTOR = {}) = 0;
    /// Product picker. The result is in the read properties; test OK first: PRDNRO keeps an earlier pick.
    virtual void Mostrar() = 0;
    /// Imports the declaration of Interno_Externo into the stock of inputs.
    virtual void Importar() = 0;
    /// Declaration browser.
    virtual void MostrarDIT() = 0;
    [[nodiscard]] virtual QString get_PRDNRO() const = 0;
    /// Customs office code shown on the import screen.
    virtual void put_ADUANA(const QString& aduana) = 0;
    /// Inputs discharged by the export subitem of Interno_Externo and IdSUB.
    virtual void VerINSxSBT() = 0;
    /// Text of a 32-bit integer; throws RuntimeError 13 for a text that is no number, 6 for one out of range.
    virtual void put_IdSUB(const QString& id) = 0;
};

/// How a member is reached by name.
enum class MemberKind { Get, Put, Call };

/// The component's one public class.
///
/// Instances share one set of state, so only one is meant to be in use at a time. Creating one reads the number
/// formats from the user's settings; releasing the last one drops the connections, which stay open: the host owns them.
/// A QApplication is made when the host has none; with an application of the host's that has no windows, creating an
/// object throws RuntimeError 429. Every call must come from the user-interface thread, else it throws RuntimeError 5,
/// as ConectarDB() and the four operations do once the application has ended.
class OVELDRA_EXPORT cloVELDRAMain final : public _cloVELDRAMain
{
public:
    cloVELDRAMain();
    /// For the component's own tests: an object over a state of their own. Not owned; must outlive the object.
    explicit cloVELDRAMain(core::Component& component);
    ~cloVELDRAMain() override;

    [[nodiscard]] bool get_OK() const override;
    [[nodiscard]] QString get_CATNRO() const override;
    [[nodiscard]] QString get_PRDDES() const override;
    [[nodiscard]] QString get_PRDNCM() const override;
    [[nodiscard]] QString get_PRDPAI() const override;
    [[nodiscard]] double get_PRDPRE() const override;
    [[nodiscard]] QString get_PRDSUF() const override;
    [[nodiscard]] QString get_PRDUNI() const override;
    void put_BaseNcm(const QString& path) override;
    void put_BaseTornel(const QString& path) override;
    void put_BaseInsumos(const QString& path) override;
    void put_Interno_Externo(const QString& interno) override;
    bool ConectarDB(const QVariant& po_DBINS, const QVariant& po_DBNCM = {}, const QVariant& po_DBTOR = {}) override;
    void Mostrar() override;
    void Importar() override;
    void MostrarDIT() override;
    [[nodiscard]] QString get_PRDNRO() const override;
    void put_ADUANA(const QString& aduana) override;
    void VerINSxSBT() override;
    void put_IdSUB(const QString& id) override;

    /// Late binding: reaches a member by name, in any letter case. The answer of a Put and of an operation without a
    /// result is an invalid QVariant. Throws RuntimeError 438 for a name or kind that is not there, 450 for a wrong
    /// number of arguments, 13 for an argument that cannot be converted.
    QVariant invoke(QStringView name, MemberKind kind, const QVariantList& arguments = {});

private:
    core::Component& m_component;
};

} // namespace oVELDRA
