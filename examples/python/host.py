#!/usr/bin/env python3
"""A minimal host in Python: connects the component with three databases and calls one of its operations.

    host.py --biblioteca /opt/oveldra/lib/liboVELDRA.so.0 --datos /tmp/datos Mostrar
"""

from __future__ import annotations

import argparse
import pathlib
import signal
import sys

import oveldra
import samples
import sqlite_host


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Anfitrión mínimo del componente oVELDRA.")
    parser.add_argument("operacion", choices=["Importar", "Mostrar", "MostrarDIT", "VerINSxSBT", "probar"],
                        help="la operación del componente; probar: conecta y termina sin mostrar nada")
    parser.add_argument("--biblioteca", help="liboVELDRA.so (si falta: la variable OVELDRA_LIBRARY, o la del sistema)")
    parser.add_argument("--datos", type=pathlib.Path, default=pathlib.Path("datos"),
                        help="carpeta de las bases de datos, que se crean si faltan (datos)")
    parser.add_argument("--interno", help=f"número interno del anfitrión ({samples.INTERNO}; para VerINSxSBT "
                                          f"{samples.EXPORT})")
    parser.add_argument("--subitem", default=str(samples.EXPORT_SUBITEM),
                        help=f"subítem de exportación ({samples.EXPORT_SUBITEM})")
    parser.add_argument("--aduana", default="001", help="código de aduana (001)")
    return parser.parse_args()


def connect(component: oveldra.Component, folder: pathlib.Path) -> bool:
    """Inputs and nomenclature by URL, the host's tables through Python. The component holds the connections; what is
    not needed here any more is let go."""
    with (oveldra.Connection.open(samples.url(folder, samples.INPUTS_FILE)) as inputs,
          oveldra.Connection.open(samples.url(folder, samples.NOMENCLATURE_FILE), read_only=True) as nomenclature,
          oveldra.Connection(sqlite_host.SqliteHost(folder / samples.HOST_FILE)) as host):
        return component.ConectarDB(inputs, nomenclature, host)


def run(options: argparse.Namespace) -> int:
    samples.make_missing(options.datos)
    with oveldra.Component() as component:
        usual = samples.EXPORT if options.operacion == "VerINSxSBT" else samples.INTERNO
        component.Interno_Externo = options.interno or usual
        component.ADUANA = options.aduana
        component.IdSUB = options.subitem
        if not connect(component, options.datos):
            return 1  # what was wrong has been told
        if options.operacion == "probar":
            print(f"oVELDRA {oveldra.version()}: conectado.")
            return 0
        component.call(options.operacion)
        if component.OK:
            print(f"Producto elegido: {component.CATNRO} / {component.PRDNRO} - {component.PRDDES}, "
                  f"posición {component.PRDNCM}, precio {component.PRDPRE:.2f}")
        return 0


def main() -> int:
    options = arguments()
    signal.signal(signal.SIGINT, signal.SIG_DFL)  # Python's own way would wait until the screen is closed
    try:
        oveldra.load(options.biblioteca)
    except (OSError, ImportError) as error:
        print(f"No se pudo cargar el componente: {error}", file=sys.stderr)
        return 1
    try:
        return run(options)
    except (oveldra.OveldraError, OSError) as error:
        print(error, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
