#pragma once

#include "DataFolder.h"

#include <oVELDRA/cloVELDRAMain.h>

#include <QString>

#include <memory>

namespace tornel {

/// What the host tells the component before an entry operation.
struct HostContext
{
    QString interno;
    QString customs;
    QString subitem;
};

/// What the component leaves after the product picker.
struct PickedProduct
{
    bool ok = false;
    QString catalog;
    QString code;
    QString description;
    QString position;
    QString country;
    double price = 0;
    QString suffixes;
    QString unit;
};

/// The entry operations of the component.
enum class Operation { PickProduct, Import, Declarations, SubitemInputs };

/// The host's side of the component: the three connections and the one object of its class.
class HostSession
{
public:
    /// Opens the databases and hands them over. Throws oVELDRA::RuntimeError.
    explicit HostSession(const DataFolder& folder);

    /// Sets the context and runs the operation; returns when its screen is closed. Throws oVELDRA::RuntimeError.
    void run(Operation operation, const HostContext& context);

    [[nodiscard]] PickedProduct product() const;

    /// One of the three connections, for the host's own questions.
    [[nodiscard]] oVELDRA::ConexionDB& database(oVELDRA::Database database) const;

private:
    std::shared_ptr<oVELDRA::ConexionDB> m_inputs;
    std::shared_ptr<oVELDRA::ConexionDB> m_nomenclature;
    std::shared_ptr<oVELDRA::ConexionDB> m_host;
    oVELDRA::cloVELDRAMain m_component;
};

} // namespace tornel
