#include "Finding.h"

#include <array>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

QString fieldName(Field field)
{
    static const std::array<QString, fields> names = {
        u"INTDCL"_s, u"ARTDCL"_s, u"ARTITM"_s, u"ARTSBT"_s,    u"ARTNRO"_s,     u"EXTINT"_s,   u"EXTSBT"_s, u"EXTNOF"_s,
        u"CATNRO"_s, u"PRDNRO"_s, u"PRDNCM"_s, u"declarado"_s, u"descargado"_s, u"esperado"_s, u"saldo"_s};
    return names[static_cast<size_t>(field)];
}

const KindTexts& textsOf(FindingKind kind)
{
    using enum Field;
    static const std::vector<Field> discharge = {ARTDCL, ARTITM, ARTSBT, ARTNRO, EXTINT, EXTSBT, EXTNOF, Discharged};
    static const std::array<KindTexts, findingKinds> texts = {{
        {u"saldo-incorrecto"_s,
         u"Saldos que no son lo declarado menos lo descargado"_s,
         {INTDCL, ARTITM, ARTSBT, ARTNRO, Declared, Discharged, Expected, Balance}},
        {u"saldo-negativo"_s, u"Saldos menores que cero"_s, {INTDCL, ARTITM, ARTSBT, ARTNRO, Declared, Balance}},
        {u"descarga-sin-articulo"_s, u"Descargas de artículos que no existen"_s, discharge},
        {u"descarga-sin-cabecera"_s, u"Descargas de declaraciones que no existen"_s, discharge},
        {u"articulo-sin-cabecera"_s,
         u"Artículos de declaraciones que no existen"_s,
         {INTDCL, ARTITM, ARTSBT, ARTNRO, Declared, Balance}},
        {u"renumeracion-a-medias"_s, u"Renumeraciones que quedaron a medias"_s, {INTDCL, ARTDCL, Discharged}},
        {u"articulo-repetido"_s,
         u"Artículos repetidos en una declaración"_s,
         {INTDCL, ARTITM, ARTSBT, ARTNRO, Declared, Balance}},
        {u"clave-duplicada"_s, u"Claves duplicadas"_s, {INTDCL, ARTNRO, CATNRO, PRDNRO}},
        {u"relacion-sin-producto"_s, u"Relaciones de productos que no existen"_s, {ARTNRO, CATNRO, PRDNRO}},
        {u"posicion-fuera-del-nomenclador"_s,
         u"Productos cuya posición ya no está en el nomenclador"_s,
         {CATNRO, PRDNRO, PRDNCM}},
        {u"producto-sin-posicion"_s, u"Productos sin posición"_s, {CATNRO, PRDNRO, PRDNCM}},
    }};
    return texts[static_cast<size_t>(kind)];
}

Value Finding::value(Field field) const
{
    for (const Entry& entry : entries) {
        if (entry.field == field) {
            return entry.value;
        }
    }
    return {};
}

QString quoted(const Value& value)
{
    if (value.isNull()) {
        return u"sin valor"_s;
    }
    const QString text = dialect::textOf(value, {});
    return value.type == dialect::ValueType::Text ? QString(u"«" + text + u"»") : text;
}

QString written(double number)
{
    return quoted(Value::ofNumber(number));
}

} // namespace oVELDRA::data
