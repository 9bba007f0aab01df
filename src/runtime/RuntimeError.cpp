#include <oVELDRA/RuntimeError.h>

#include <QStringView>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA {

namespace {

struct Description
{
    int number;
    QStringView text;
};

// Errors whose text depends on the statement or the file at fault are thrown with a text of their own.
constexpr std::array descriptions{
    Description{5, u"Argumento o llamada a procedimiento no válidos"},
    Description{6, u"Desbordamiento"},
    Description{7, u"Memoria insuficiente"},
    Description{9, u"El subíndice está fuera del intervalo"},
    Description{11, u"División por cero"},
    Description{13, u"No coinciden los tipos"},
    Description{91, u"Variable de objeto o bloque With no establecido"},
    Description{94, u"Uso no válido de Null"},
    Description{380, u"El valor de la propiedad no es válido"},
    Description{400, u"El formulario ya se está mostrando; no se puede mostrar en forma modal"},
    Description{424, u"Se requiere un objeto"},
    Description{430, u"La clase no acepta Automatización o no acepta la interfaz esperada"},
    Description{438, u"El objeto no admite esta propiedad o método"},
    Description{450, u"El número de argumentos es incorrecto o la asignación de la propiedad no es válida"},
    Description{3021,
                u"El valor de BOF o EOF es True, o el actual registro se eliminó; la operación solicitada requiere "
                u"un registro actual."},
    Description{3265, u"No se encontró el elemento en la colección que corresponde al nombre o el ordinal solicitado."},
    Description{3709, u"La conexión no se puede usar para realizar esta operación. Está cerrada o no es válida en este "
                      u"contexto."},
    Description{-2147217904, u"No se han especificado valores para algunos de los parámetros requeridos."},
    Description{-2147217913, u"No coinciden los tipos de datos en la expresión de criterios."},
};

QString descriptionOf(int number)
{
    for (const Description& description : descriptions) {
        if (description.number == number) {
            return description.text.toString();
        }
    }
    return u"Error definido por la aplicación o el objeto"_s;
}

} // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, descriptionOf(number)) {}

RuntimeError::RuntimeError(int number, QString description, QString source, int nativeNumber)
    : m_number(number), m_nativeNumber(nativeNumber), m_description(std::move(description)),
      m_source(std::move(source)), m_what(QString(QString::number(number) + u" - "_s + m_description).toUtf8())
{}

RuntimeError::~RuntimeError() = default;

const char* RuntimeError::what() const noexcept
{
    return m_what.constData();
}

} // namespace oVELDRA
