/*
 * A minimal host in C: connects the component with three databases, which it makes if they are missing, and calls one
 * of its operations.
 *
 *     host FOLDER Importar|Mostrar|MostrarDIT|VerINSxSBT|probar
 *
 * `probar` connects and ends without showing anything.
 */
#include <oVELDRA/oveldra.h>

#include <stdbool.h>
#include <stdio.h>
#include <string.h>

enum { NATIVE_NO_SUCH_FILE = 3024, URL_SIZE = 1024 };

/* One of the databases, and what is written into a new one. */
typedef struct
{
    const char* file;
    int32_t kind;
    int32_t access;
    const char* const* statements;
} database;

static const char* const inputs_rows[] = {
    "insert into CAT (CATNRO,CATDES) values ('RELOJES','Relojes y despertadores')",
    "insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDPAI,PRDKGU) values "
    "('RELOJES','DESP-01','Despertador a cuarzo','9103.10.00',1,'07',12.5,'203',0.25)",
    "insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK) values ('AN0000','SD00000000000001X',"
    "datevalue('15/01/2026'),'Mecanismos a cuarzo',datevalue('15/01/2027'),'001',1)",
    "insert into DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,ARTPRE,RALCAN,EXTINT,EXTSBT) values "
    "('SD00000000000001X','MEC-Q1','001','000',1.25,120,'AN0001',7)",
    NULL,
};

static const char* const nomenclature_rows[] = {
    "insert into NCM ([001],[002],[003],[010],[012]) values ('9103.10','00','','Despertadores a pila','07')",
    NULL,
};

static const char* const host_rows[] = {
    "insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values ('AN0001',1,1,1)",
    "insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values ('AN0001',1,100,10,5,0,0)",
    "insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,NCM,FOB) values "
    "('AN0001',1,1,'MEC-Q1','07',80,1.25,'9108.12.10',100)",
    NULL,
};

static const database inputs_database = {"insumos.sqlite", OVELDRA_INPUTS, OVELDRA_READ_WRITE, inputs_rows};
static const database nomenclature_database = {"nomenclador.sqlite", OVELDRA_NOMENCLATURE, OVELDRA_READ_ONLY,
                                               nomenclature_rows};
static const database host_database = {"anfitrion.sqlite", OVELDRA_HOST, OVELDRA_READ_ONLY, host_rows};

/* Tells the last failure; false, so that a function can end with it. */
static bool failed(void)
{
    fprintf(stderr, "%ld - %s\n", (long)oveldra_error_number(), oveldra_error_description());
    return false;
}

static bool make(const char* url, const database* which)
{
    oveldra_connection* made = NULL;
    if (oveldra_connection_create(url, which->kind, &made) != 0) {
        return failed();
    }
    bool good = true;
    for (const char* const* statement = which->statements; good && *statement != NULL; ++statement) {
        int64_t affected = 0;
        good = oveldra_execute(made, *statement, &affected) == 0 || failed();
    }
    oveldra_connection_release(made);
    return good;
}

/* Opens a database of the folder, and makes it before if it is missing. */
static bool open_or_make(const char* folder, const database* which, oveldra_connection** connection)
{
    char url[URL_SIZE];
    const int length = snprintf(url, sizeof url, "sqlite:%s/%s", folder, which->file);
    if (length < 0 || (size_t)length >= sizeof url) {
        fprintf(stderr, "El nombre de la carpeta es demasiado largo.\n");
        return false;
    }
    if (oveldra_connection_open(url, which->access, connection) == 0) {
        return true;
    }
    if (oveldra_error_native() != NATIVE_NO_SUCH_FILE) {
        return failed();
    }
    return make(url, which) && (oveldra_connection_open(url, which->access, connection) == 0 || failed());
}

/* Hands the three databases over. The component holds them; the host lets go of its own hold. */
static bool connect_databases(oveldra_object* object, const char* folder)
{
    oveldra_connection* inputs = NULL;
    oveldra_connection* nomenclature = NULL;
    oveldra_connection* host = NULL;
    int32_t connected = 0; /* what was not well has been told to the user */
    const bool good = open_or_make(folder, &inputs_database, &inputs) &&
                      open_or_make(folder, &nomenclature_database, &nomenclature) &&
                      open_or_make(folder, &host_database, &host) &&
                      (oveldra_ConectarDB(object, inputs, nomenclature, host, &connected) == 0 || failed());
    oveldra_connection_release(inputs);
    oveldra_connection_release(nomenclature);
    oveldra_connection_release(host);
    return good && connected != 0;
}

static bool print_pick(oveldra_object* object)
{
    int32_t picked = 0;
    if (oveldra_get_OK(object, &picked) != 0) {
        return failed();
    }
    if (picked == 0) {
        return true;
    }
    char* product = NULL;
    char* description = NULL;
    double price = 0;
    const bool good = (oveldra_get_PRDNRO(object, &product) == 0 && oveldra_get_PRDDES(object, &description) == 0 &&
                       oveldra_get_PRDPRE(object, &price) == 0) ||
                      failed();
    if (good) {
        printf("Producto elegido: %s - %s, precio %.2f\n", product, description, price);
    }
    oveldra_text_release(product);
    oveldra_text_release(description);
    return good;
}

static bool run(oveldra_object* object, const char* folder, const char* operation)
{
    if (oveldra_put_Interno_Externo(object, "AN0001") != 0 || oveldra_put_ADUANA(object, "001") != 0 ||
        oveldra_put_IdSUB(object, "7") != 0) {
        return failed();
    }
    if (!connect_databases(object, folder)) {
        return false;
    }
    if (strcmp(operation, "probar") == 0) {
        printf("oVELDRA %s: conectado.\n", oveldra_version());
        return true;
    }
    /* By name, as a host does that reads its operations from a menu; oveldra_Mostrar() and the others do the same. */
    if (oveldra_call(object, operation, NULL, 0, NULL) != 0) {
        return failed();
    }
    return print_pick(object);
}

int main(int count, char** arguments)
{
    if (count != 3) {
        fprintf(stderr, "uso: host CARPETA Importar|Mostrar|MostrarDIT|VerINSxSBT|probar\n");
        return 2;
    }
    if (oveldra_interface() < OVELDRA_INTERFACE) {
        fprintf(stderr, "La biblioteca %s es anterior a este programa.\n", oveldra_version());
        return 1;
    }
    oveldra_object* object = NULL;
    if (oveldra_create(&object) != 0) {
        failed();
        return 1;
    }
    const bool good = run(object, arguments[1], arguments[2]);
    oveldra_release(object);
    return good ? 0 : 1;
}
