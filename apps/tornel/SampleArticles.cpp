#include "SampleArticles.h"

#include <algorithm>
#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tornel {

namespace {

constexpr std::array articles{
    // Electronic controls
    SampleArticle{u"MCU-32B-48P", u"Microcontrolador de 32 bits, 48 patas, montaje superficial", u"8542.31.20", 2.85,
                  5000, true},
    SampleArticle{u"CAP-100N-0603", u"Condensador cerámico multicapa 100 nF, 0603", u"8532.24.10", 0.0042, 400000,
                  true},
    SampleArticle{u"RES-10K-0603", u"Resistencia 10 kΩ 1 %, 0603", u"8533.21.20", 0.0011, 500000, true},
    SampleArticle{u"DIO-ZEN-5V1", u"Diodo Zener 5,1 V", u"8541.10.11", 0.018, 60000, true},
    SampleArticle{u"PCB-2C-CTRL", u"Circuito impreso doble faz para placa de control", u"8534.00.12", 1.35, 6000, true},
    SampleArticle{u"TRF-CORR-20A", u"Transformador de corriente 20 A", u"8504.31.11", 3.1, 2500, true},
    // Washing machines and refrigerators
    SampleArticle{u"MOT-UNI-550", u"Motor universal 550 W para lavarropas", u"8501.20.00", 18.4, 3000, true},
    SampleArticle{u"ROD-6203-2RS", u"Rodamiento de bolas 6203 con doble sello", u"8482.10.10", 4.75, 900, false},
    SampleArticle{u"VAL-EVA-LAV", u"Válvula de evacuación para lavarropas", u"8481.80.11", 2.2, 4000, true},
    SampleArticle{u"INT-BIP-16A", u"Interruptor bipolar 16 A", u"8536.50.90", 0.64, 9000, true},
    SampleArticle{u"CAB-3X075-TC", u"Cable 3 x 0,75 mm² con ficha", u"8544.42.00", 7.9, 2200, false},
    SampleArticle{u"COM-HER-170", u"Compresor hermético, desplazamiento menor de 170 cm3", u"8414.30.91", 38.5, 1500,
                  true},
    SampleArticle{u"VEN-MIC-80", u"Microventilador de 80 x 80 mm", u"8414.59.10", 2.95, 3500, true},
    SampleArticle{u"TER-BIM-95", u"Termostato bimetálico 95 °C", u"9032.10", 1.1, 5000, true},
    SampleArticle{u"CHA-GAL-060", u"Chapa de acero galvanizada de 0,60 mm", u"7210.49.10", 0.92, 48000, false},
    SampleArticle{u"CHA-ALU-120", u"Chapa de aluminio de 1,20 mm", u"7606.12.90", 3.4, 6500, false},
    SampleArticle{u"TUB-COB-838", u"Tubo de cobre refinado 3/8\"", u"7411.10.10", 8.15, 3800, false},
    SampleArticle{u"POL-PP-SC", u"Polipropileno sin carga, en gránulos", u"3902.10.20", 1.12, 25000, false},
    SampleArticle{u"POL-ABS-GR", u"Copolímero ABS en gránulos", u"3903.30.10", 1.86, 18000, false},
    SampleArticle{u"JUN-EPDM-PTA", u"Junta de caucho EPDM para puerta", u"4016.93.00", 4.6, 2600, false},
    SampleArticle{u"TOR-M4X12-ZN", u"Tornillo M4 x 12 cincado", u"7318.15.00", 3.05, 1800, false},
    SampleArticle{u"RES-HEL-SUSP", u"Resorte helicoidal para suspensión de tambor", u"7320.20.10", 2.4, 1200, false},
    // Footwear
    SampleArticle{u"CUE-VAC-FL14", u"Cuero vacuno flor entera de 1,4 mm", u"4107.11.20", 21.5, 1100, false},
    SampleArticle{u"SUE-TPU-4045", u"Suela de poliuretano termoplástico, talles 40 a 45", u"6406.20.00", 6.8, 4400,
                  false},
    SampleArticle{u"FOR-PES-150", u"Tejido de poliéster para forro de 1,50 m", u"5407.61.00", 5.25, 2800, false},
    SampleArticle{u"CAJ-COR-N5", u"Caja de cartón corrugado de doble pared N° 5", u"4819.10.00", 1.75, 7000, false},
};

} // namespace

std::span<const SampleArticle> sampleArticles()
{
    return articles;
}

const SampleArticle& sampleArticle(QStringView code)
{
    const auto* const found = std::ranges::find(articles, code, &SampleArticle::code);
    if (found == articles.end()) {
        throw std::out_of_range("no sample article " + code.toString().toStdString());
    }
    return *found;
}

} // namespace tornel
