#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QString>

#include <memory>
#include <utility>

namespace oVELDRA::core {

/// A connection that the host may or may not have handed over. On first use without one it becomes an unconnected one,
/// every use of which is error 3709.
class ConnectionSlot
{
public:
    void assign(std::shared_ptr<ConexionDB> connection) { m_connection = std::move(connection); }
    void release() { m_connection.reset(); }
    /// The connection to use. The reference holds until the next assign() or release().
    [[nodiscard]] ConexionDB& operator*();
    [[nodiscard]] ConexionDB* operator->() { return &**this; }
    /// What the host handed over, or null: for telling connections apart, not for use.
    [[nodiscard]] const ConexionDB* assigned() const { return m_connection.get(); }

private:
    std::shared_ptr<ConexionDB> m_connection;
    std::unique_ptr<ConexionDB> m_unconnected; // made on first use without a connection
};

/// The declaration that the browser hands its dialogs, and what the editor hands back. All of it as texts.
struct CurrentDeclaration
{
    QString number;         ///< INTDCL
    QString internalNumber; ///< INTNRO
    QString description;
    QString ctc;
    QString officialDate; ///< as the user typed it
    QString expiryDate;
    QString enabled; ///< "1" or "0"
    bool saved = false;
};

/// What the class and all screens share: the host's context, the connections, the number formats, the result of the
/// product picker, and the codes and flags that screens hand each other. One set per component.
struct SharedState
{
    ConnectionSlot g_DBINS; ///< inputs database, read and written
    ConnectionSlot g_DBTOR; ///< the host's declaration database, read
    ConnectionSlot g_DBNCM; ///< nomenclature database, read

    QString g_sBaseNcm;
    QString g_sBaseTornel;
    QString g_sBaseInsumos;
    QString sInternoExt;
    QString g_sAduana;
    qint32 g_lIdSUB = 0;

    bool g_bOpVDE = false;
    QString g_sFmtCantidad;
    QString g_sFmtListado;

    bool g_bOK = false;
    QString g_sCATNRO;
    QString g_sPRDNRO;
    QString g_sPRDDES;
    QString g_sPRDNCM;
    QString g_sPRDUNI;
    QString g_sPRDPAI;
    QString g_sPRDSUF;
    double g_dPRDPRE = 0;

    /// The catalog that the product forms work on, and what its dialog is told and answers.
    QString currentCatalog;
    bool catalogModify = false;
    bool catalogSaved = false;

    /// What the position search and the option form of the suffixes hand back.
    QString chosenPosition;
    QString chosenSuffix;

    /// The article being edited: what the product list, the product editor and the input editor pass each other.
    QString currentProduct;
    QString currentInput;
    bool productModify = false;
    bool productSaved = false;
    bool inputModify = false;
    bool inputSaved = false;

    CurrentDeclaration declaration;
};

} // namespace oVELDRA::core
