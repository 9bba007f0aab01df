/*
 * The component for hosts in C, and in every language that can call C.
 *
 *     oveldra_object* object = NULL;
 *     oveldra_connection* inputs = NULL;
 *     int32_t connected = 0;
 *     if (oveldra_connection_open("sqlite:insumos.sqlite", OVELDRA_READ_WRITE, &inputs) != 0 ||
 *         oveldra_create(&object) != 0 ||
 *         oveldra_ConectarDB(object, inputs, NULL, NULL, &connected) != 0 ||
 *         oveldra_MostrarDIT(object) != 0) {
 *         fprintf(stderr, "%ld - %s\n", (long)oveldra_error_number(), oveldra_error_description());
 *     }
 *     oveldra_release(object);
 *     oveldra_connection_release(inputs);
 *
 * Errors. Every function that can fail answers 0, or the number of the error; what it was to give is then left as it
 * was. The number, a description in Spanish and the rest of the last failure on the calling thread are kept for
 * oveldra_error_number() and its companions. Nothing is thrown or jumped across this border, in either direction.
 *
 * Numbers are those of the automation runtime (5 wrong argument, 6 overflow, 7 no memory, 13 wrong type, 91 no object,
 * 94 Null where a value is needed, 400 the screen is open already, 424 no object where one is required, 429 no object
 * can be made, 438 no such member, 450 wrong number of arguments, 3021 no current row, 3265 no such field), or negative
 * ones of a database: -2147217900 syntax, -2147217904 unknown column, -2147217913 types that do not match, -2147217865
 * unknown table, -2147467259 anything else, told apart by oveldra_error_native(): 3010 table exists, 3011 no such
 * schema, 3022 duplicate key, 3024 no such file, 3026 disk full, 3027 read-only, 3049 damaged, 3050 reading or writing
 * failed, 3051 no permission, 3146 other, 3151 no connection with the server, 3163 text too long, 3218 locked by
 * another seat, 3343 no database, 3435 file on a network folder.
 *
 * Texts are UTF-8 and end with a null character. One that is not UTF-8 is refused with error 5, a null pointer in place
 * of one with error 94; one that is to be given and holds a null character inside is error 5, too. A text that a
 * function gives belongs to the caller, who ends it with oveldra_text_release().
 *
 * Threads. Everything happens on one thread: that of the host's QApplication or, when there is none, the thread that
 * makes the first object or connection, on which the component then makes one that lasts to the end of the process.
 * Calls from other threads answer error 5, but for the version and the error functions, which any thread may call. The
 * operations that show a screen return when the user has closed it; the screen takes the events meanwhile.
 *
 * Releasing. What a function makes is released once, with the function named for it; a null pointer may be released. An
 * object and a connection may be released in any order, but not while a screen is open.
 *
 * Booleans are int32_t: 0 is false, anything else true; the component gives 1.
 */
#ifndef OVELDRA_OVELDRA_H
#define OVELDRA_OVELDRA_H

#include <oVELDRA/Export.h>

/* NOLINTBEGIN(modernize-*): this header is C. */

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Version ---- */

/* The interface that this header describes. It grows when something is added; nothing that is there ever changes. */
#define OVELDRA_INTERFACE 1

/* The interface of the library that is loaded. A host can run with it when it is not below OVELDRA_INTERFACE. */
OVELDRA_EXPORT int32_t oveldra_interface(void);

/* The version of the library, such as "0.6.0". The text is the library's. */
OVELDRA_EXPORT const char* oveldra_version(void);

/* ---- Errors ---- */

/* The last failure on this thread: its number (0: none yet), its description in Spanish, what raised it (may be empty)
   and the native number that tells database errors apart (0: nothing to tell apart). A call that succeeds leaves them.
   The texts are the library's and last until the next failure on this thread. */
OVELDRA_EXPORT int32_t oveldra_error_number(void);
OVELDRA_EXPORT const char* oveldra_error_description(void);
OVELDRA_EXPORT const char* oveldra_error_source(void);
OVELDRA_EXPORT int32_t oveldra_error_native(void);

/* For a host's callbacks (see oveldra_host_connection): says what failed and answers `number`, so that a callback ends
   with `return oveldra_fail(-2147467259, 3022, "…");`. `description` is what the user will read; null stands for the
   runtime's own text for the number. 0, which means success, is taken for error 5. */
OVELDRA_EXPORT int32_t oveldra_fail(int32_t number, int32_t native, const char* description);

/* ---- Values ---- */

/* What a variant holds, and which of its members counts. */
enum {
    OVELDRA_OMITTED = 0,    /* an argument that is left out; no value */
    OVELDRA_NULL = 1,       /* Null */
    OVELDRA_BOOLEAN = 2,    /* integer: 0 or 1; of a yes/no column: 0, -1 or the small integer that was written */
    OVELDRA_INTEGER = 3,    /* integer */
    OVELDRA_DOUBLE = 4,     /* number */
    OVELDRA_TEXT = 5,       /* text */
    OVELDRA_DATE = 6,       /* text: the day as "2026-11-21" */
    OVELDRA_CONNECTION = 7, /* connection; only as an argument */
    OVELDRA_OBJECT = 8      /* an object of another kind; only as an argument, where it is refused with error 430 */
};

typedef struct oveldra_connection oveldra_connection;

/* A value with its type. A variant filled with zeros is an omitted one.
 *
 * In an argument, text and connection stay the caller's and need to last for the call only. In a result, the text is
 * the caller's to end, with oveldra_variant_clear(). In the answer of a host's callback, the text stays the host's and
 * must last until the next callback of the same recordset.
 */
typedef struct oveldra_variant
{
    int32_t kind;
    union {
        int64_t integer;
        double number;
        const char* text;
        oveldra_connection* connection;
    } value;
} oveldra_variant;

/* Ends the text of a result, if it has one, and makes the variant an omitted one. */
OVELDRA_EXPORT void oveldra_variant_clear(oveldra_variant* result);

/* Ends a text that a function gave. */
OVELDRA_EXPORT void oveldra_text_release(const char* text);

/* ---- Connections ---- */

/* How a database is opened; nomenclature and host databases are opened read-only. */
enum { OVELDRA_READ_WRITE = 0, OVELDRA_READ_ONLY = 1 };

/* The databases whose tables the component knows. */
enum {
    OVELDRA_INPUTS = 0,       /* CAT, PRD, RIP, INTINS, INS, DIP */
    OVELDRA_NOMENCLATURE = 1, /* NCM, sufidos */
    OVELDRA_HOST = 2          /* caratula, item, groupsubitems */
};

/* Opens an existing database: "sqlite:FILE", "sqlite::memory:" or
   "postgresql://USER@HOST:PORT/DATABASE?schema=NAME" (schema: public unless named; `host`, `port` and `user` may stand
   behind the question mark too, a host being the folder of a socket then; passwords come from PGPASSWORD or .pgpass).
 */
OVELDRA_EXPORT int32_t oveldra_connection_open(const char* url, int32_t access, oveldra_connection** connection);

/* Makes a database with the tables and indexes of `database` (OVELDRA_INPUTS …) and opens it for writing. One that
   holds such a table already is refused (native error 3010). */
OVELDRA_EXPORT int32_t oveldra_connection_create(const char* url, int32_t database, oveldra_connection** connection);

/*
 * A connection of the host's own: what the component asks of it, as a table of functions.
 *
 * `host` is what was given with the table, `recordset` and `burst` are what open_recordset() and begin_burst() gave.
 * Every function is called on the component's thread, and none after release(). It answers 0, or the number of an
 * error, described by oveldra_fail() just before; the user reads that description. A function must return: no
 * exception, no jump. It may call functions of this header, but not release what it works for.
 *
 * The texts that come are the component's SQL in the Jet dialect: text values in single quotes, a quote in them
 * doubled; numbers in the user's regional form inside quotes, dates as datevalue('dd/mm/yyyy').
 */
typedef struct oveldra_host_connection
{
    /* sizeof(oveldra_host_connection), by which later versions tell what is there. */
    size_t size;

    /* The component has let go of the connection and of all its recordsets. May be null. */
    void (*release)(void* host);

    /* Keeps the statement for the next open_recordset() or execute(). The text lasts for the call. */
    int32_t (*set_sql)(void* host, const char* sql);

    /* Runs the statement as a query and gives its rows, on the first of them; an empty result is a success, too. The
       rows must not change by what is written afterwards. */
    int32_t (*open_recordset)(void* host, void** recordset);

    /* Runs the statement as a command and gives the number of records affected. */
    int32_t (*execute)(void* host, int64_t* affected);

    /* A scope around the statements of one operation: no other program may write in between, and a process that dies in
       between leaves nothing of it. It is no undo: a statement that fails leaves what the ones before it did.
       commit_burst() is called at most once, makes them permanent, and when it fails nothing of the scope may be in the
       database. end_burst() always comes, after it or without it; without it what succeeded is kept all the same.
       Scopes nest; only the outermost one counts. All three are null for a connection without such a thing. */
    int32_t (*begin_burst)(void* host, void** burst);
    int32_t (*commit_burst)(void* burst);
    void (*end_burst)(void* burst);

    /* The rows. at_eof: whether it stands past the last row, at once for an empty result. move_next: error 3021 when it
       is there already; move_first: error 3021 for an empty result. record_count: rows in all. value: the field of the
       current row by column name or alias in any letter case; error 3265 for an unknown one. Kinds of values: Null,
       boolean, integer, double, text, date. */
    int32_t (*at_eof)(void* recordset, int32_t* eof);
    int32_t (*move_next)(void* recordset);
    int32_t (*move_first)(void* recordset);
    int32_t (*record_count)(void* recordset, int64_t* count);
    int32_t (*value)(void* recordset, const char* field, oveldra_variant* value);

    /* The component needs the rows no more. */
    void (*release_recordset)(void* recordset);
} oveldra_host_connection;

/* Makes a connection of a host's functions. `functions` is copied; all but the ones that may be null must be there,
   else error 5. `host` is handed back to each function; release() ends it, which is not called when this function
   fails. */
OVELDRA_EXPORT int32_t oveldra_connection_from_host(const oveldra_host_connection* functions, void* host,
                                                    oveldra_connection** connection);

/* Lets go of a connection. It lasts for as long as an object holds it, too. */
OVELDRA_EXPORT void oveldra_connection_release(oveldra_connection* connection);

/* The same operations on a connection, of whatever origin, for a host that has no other way into its database. A
   recordset is a snapshot, readable after its connection is gone. */
typedef struct oveldra_recordset oveldra_recordset;

OVELDRA_EXPORT int32_t oveldra_execute(oveldra_connection* connection, const char* sql, int64_t* affected);
OVELDRA_EXPORT int32_t oveldra_open(oveldra_connection* connection, const char* sql, oveldra_recordset** recordset);
OVELDRA_EXPORT int32_t oveldra_at_eof(const oveldra_recordset* recordset, int32_t* eof);
OVELDRA_EXPORT int32_t oveldra_move_next(oveldra_recordset* recordset);
OVELDRA_EXPORT int32_t oveldra_move_first(oveldra_recordset* recordset);
OVELDRA_EXPORT int32_t oveldra_record_count(const oveldra_recordset* recordset, int64_t* count);
OVELDRA_EXPORT int32_t oveldra_value(const oveldra_recordset* recordset, const char* field, oveldra_variant* value);
OVELDRA_EXPORT void oveldra_recordset_release(oveldra_recordset* recordset);

/* ---- The object ---- */

/* An object of the class cloVELDRAMain. All objects share one set of state: use one at a time. */
typedef struct oveldra_object oveldra_object;

/* Makes an object, which reads the number formats from the user's settings. 429 when the host's application has no
   windows. */
OVELDRA_EXPORT int32_t oveldra_create(oveldra_object** object);

/* Releases it. With the last object the component lets go of the connections and destroys its screens. */
OVELDRA_EXPORT void oveldra_release(oveldra_object* object);

/* The members of the class, in the order of their slots. */

/* Whether the user picked a product in Mostrar(); test it before the fields, as PRDNRO keeps an earlier pick. */
OVELDRA_EXPORT int32_t oveldra_get_OK(oveldra_object* object, int32_t* value);
/* The picked product: catalog, description, tariff position, country, unit price, value suffixes, unit. */
OVELDRA_EXPORT int32_t oveldra_get_CATNRO(oveldra_object* object, char** text);
OVELDRA_EXPORT int32_t oveldra_get_PRDDES(oveldra_object* object, char** text);
OVELDRA_EXPORT int32_t oveldra_get_PRDNCM(oveldra_object* object, char** text);
OVELDRA_EXPORT int32_t oveldra_get_PRDPAI(oveldra_object* object, char** text);
OVELDRA_EXPORT int32_t oveldra_get_PRDPRE(oveldra_object* object, double* value);
OVELDRA_EXPORT int32_t oveldra_get_PRDSUF(oveldra_object* object, char** text);
OVELDRA_EXPORT int32_t oveldra_get_PRDUNI(oveldra_object* object, char** text);
/* The paths of the three databases: kept, and used by nothing. */
OVELDRA_EXPORT int32_t oveldra_put_BaseNcm(oveldra_object* object, const char* path);
OVELDRA_EXPORT int32_t oveldra_put_BaseTornel(oveldra_object* object, const char* path);
OVELDRA_EXPORT int32_t oveldra_put_BaseInsumos(oveldra_object* object, const char* path);
/* The host's file number of the declaration to work on. */
OVELDRA_EXPORT int32_t oveldra_put_Interno_Externo(oveldra_object* object, const char* interno);
/* The three connections: inputs, nomenclature, the host's own. A null pointer is Null: the connection of that kind
   stays as it is; the first must be there. `connected` is whether all was well; what was not has been reported to the
   user. (An argument that is left out is no Null; oveldra_call() can express it.) */
OVELDRA_EXPORT int32_t oveldra_ConectarDB(oveldra_object* object, oveldra_connection* po_DBINS,
                                          oveldra_connection* po_DBNCM, oveldra_connection* po_DBTOR,
                                          int32_t* connected);
/* Product picker. */
OVELDRA_EXPORT int32_t oveldra_Mostrar(oveldra_object* object);
/* Imports the declaration of Interno_Externo into the stock of inputs. */
OVELDRA_EXPORT int32_t oveldra_Importar(oveldra_object* object);
/* Declaration browser. */
OVELDRA_EXPORT int32_t oveldra_MostrarDIT(oveldra_object* object);
/* The picked product's code; after a cancelled pick that of the one before. */
OVELDRA_EXPORT int32_t oveldra_get_PRDNRO(oveldra_object* object, char** text);
/* The customs office code that the import screen shows. */
OVELDRA_EXPORT int32_t oveldra_put_ADUANA(oveldra_object* object, const char* aduana);
/* Inputs discharged by the export subitem of Interno_Externo and IdSUB. */
OVELDRA_EXPORT int32_t oveldra_VerINSxSBT(oveldra_object* object);
/* The subitem: the text of a 32-bit integer; 13 for one that is no number, 6 for one out of range. */
OVELDRA_EXPORT int32_t oveldra_put_IdSUB(oveldra_object* object, const char* id);

/* How a member is reached. */
enum {
    OVELDRA_GET = 0, /* a property that can be read */
    OVELDRA_PUT = 1, /* a property that can be written */
    OVELDRA_CALL = 2 /* an operation */
};

/* A member of the class, for bindings that offer what there is. */
typedef struct oveldra_member
{
    const char* name;   /* the library's */
    int32_t kind;       /* OVELDRA_GET, OVELDRA_PUT or OVELDRA_CALL */
    int32_t parameters; /* how many arguments it takes at most (a property's new value counts) */
    int32_t required;   /* and at least */
} oveldra_member;

/* The member in a slot, from 1; 9 for a slot that there is not. */
OVELDRA_EXPORT int32_t oveldra_member_at(int32_t slot, oveldra_member* member);

/* The same members by name, in any letter case. A result is written over what stands in the variant. 438 for a name
   that is not there or of another kind (a write-only property is not to be got), 450 for a wrong number of arguments,
   94 for Null and 13 for any other value that cannot become the member's type. Numbers and dates become texts as the
   user's regional settings write them. */
OVELDRA_EXPORT int32_t oveldra_get(oveldra_object* object, const char* name, oveldra_variant* result);
OVELDRA_EXPORT int32_t oveldra_put(oveldra_object* object, const char* name, const oveldra_variant* value);
/* `arguments` may be null when `count` is 0, and `result` when the answer is not wanted; an operation without one gives
   an omitted variant. */
OVELDRA_EXPORT int32_t oveldra_call(oveldra_object* object, const char* name, const oveldra_variant* arguments,
                                    size_t count, oveldra_variant* result);

#ifdef __cplusplus
}
#endif

/* NOLINTEND(modernize-*) */

#endif
