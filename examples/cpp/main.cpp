// A minimal host in C++ on Qt: connects the component with three databases, which it makes if they are missing, and
// calls one of its operations.
//
//     host FOLDER Importar|Mostrar|MostrarDIT|VerINSxSBT|probar
//
// `probar` connects and ends without showing anything.

#include <oVELDRA/Store.h>
#include <oVELDRA/cloVELDRAMain.h>

#include <QApplication>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// One of the databases, and what is written into a new one.
struct Base
{
    QString file;
    oVELDRA::Database kind;
    oVELDRA::Access access;
    QStringList statements;
};

Base inputs()
{
    return {u"insumos.sqlite"_s,
            oVELDRA::Database::Inputs,
            oVELDRA::Access::ReadWrite,
            {u"insert into CAT (CATNRO,CATDES) values ('RELOJES','Relojes y despertadores')"_s,
             u"insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDPAI,PRDKGU) values "
             "('RELOJES','DESP-01','Despertador a cuarzo','9103.10.00',1,'07',12.5,'203',0.25)"_s,
             u"insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK) values ('AN0000',"
             "'SD00000000000001X',datevalue('15/01/2026'),'Mecanismos a cuarzo',datevalue('15/01/2027'),'001',1)"_s,
             u"insert into DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,ARTPRE,RALCAN,EXTINT,EXTSBT) values "
             "('SD00000000000001X','MEC-Q1','001','000',1.25,120,'AN0001',7)"_s}};
}

Base nomenclature()
{
    return {
        u"nomenclador.sqlite"_s,
        oVELDRA::Database::Nomenclature,
        oVELDRA::Access::ReadOnly,
        {u"insert into NCM ([001],[002],[003],[010],[012]) values ('9103.10','00','','Despertadores a pila','07')"_s}};
}

Base host()
{
    return {u"anfitrion.sqlite"_s,
            oVELDRA::Database::Host,
            oVELDRA::Access::ReadOnly,
            {u"insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values ('AN0001',1,1,1)"_s,
             u"insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values "
             "('AN0001',1,100,10,5,0,0)"_s,
             u"insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,NCM,FOB) values "
             "('AN0001',1,1,'MEC-Q1','07',80,1.25,'9108.12.10',100)"_s}};
}

/// A database of the folder as an argument of ConectarDB(), made before if it is missing.
QVariant openOrMake(const QString& folder, const Base& base)
{
    constexpr int noSuchFile = 3024;
    const QString url = u"sqlite:"_s + folder + u'/' + base.file;
    try {
        return QVariant::fromValue(oVELDRA::connectStore(url, base.access));
    } catch (const oVELDRA::RuntimeError& error) {
        if (error.nativeNumber() != noSuchFile) {
            throw;
        }
    }
    const auto made = oVELDRA::createStore(url, base.kind);
    for (const QString& statement : base.statements) {
        made->setSql(statement);
        made->execute();
    }
    return QVariant::fromValue(oVELDRA::connectStore(url, base.access));
}

/// The exit code.
int run(const QString& folder, const QString& operation)
{
    QTextStream out(stdout);
    oVELDRA::cloVELDRAMain component;
    component.put_Interno_Externo(u"AN0001"_s);
    component.put_ADUANA(u"001"_s);
    component.put_IdSUB(u"7"_s);
    const QVariant stock = openOrMake(folder, inputs());
    const QVariant tariff = openOrMake(folder, nomenclature());
    const QVariant declarations = openOrMake(folder, host());
    if (!component.ConectarDB(stock, tariff, declarations)) {
        return 1; // what was wrong has been told to the user
    }
    if (operation == u"probar"_s) {
        out << u"conectado.\n"_s;
        return 0;
    }
    // By name, as a host does that reads its operations from a menu; Mostrar() and the others do the same.
    component.invoke(operation, oVELDRA::MemberKind::Call);
    if (component.get_OK()) {
        out << u"Producto elegido: "_s << component.get_PRDNRO() << u" - "_s << component.get_PRDDES() << u", precio "_s
            << QString::number(component.get_PRDPRE(), 'f', 2) << u'\n';
    }
    return 0;
}

} // namespace

int main(int count, char** arguments)
{
    const QApplication application(count, arguments);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 3) {
        std::fputs("uso: host CARPETA Importar|Mostrar|MostrarDIT|VerINSxSBT|probar\n", stderr);
        return 2;
    }
    try {
        return run(words.at(1), words.at(2));
    } catch (const oVELDRA::RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
