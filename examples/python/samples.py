"""The sample databases of the example host, made where there are none: few rows, made up for it."""

from __future__ import annotations

import contextlib
import datetime
import pathlib

import oveldra
import sqlite_host

INPUTS_FILE = "insumos.sqlite"
NOMENCLATURE_FILE = "nomenclador.sqlite"
HOST_FILE = "anfitrion.sqlite"

INTERNO = "AN0001"  # the declaration that can be imported
EXPORT, EXPORT_SUBITEM = "EX0001", 7  # the export that discharged inputs


def url(folder: pathlib.Path, file: str) -> str:
    """A file of the folder for the component."""
    return f"sqlite:{folder / file}"


def make_missing(folder: pathlib.Path) -> None:
    """Makes the databases of the folder that are not there."""
    folder.mkdir(parents=True, exist_ok=True)
    for file, make in ((INPUTS_FILE, _make_inputs), (NOMENCLATURE_FILE, _make_nomenclature), (HOST_FILE, _make_host)):
        if not (folder / file).exists():
            make(folder)


def _make_inputs(folder: pathlib.Path) -> None:
    this_year = datetime.date.today().year
    statements = (
        "insert into CAT (CATNRO,CATDES) values ('RELOJES','Relojes y despertadores')",
        "insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDPAI,PRDKGU) values "
        "('RELOJES','DESP-01','Despertador a cuarzo','9103.10.00',1,'07','12.5','203','0.25')",
        "insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDPAI,PRDKGU) values "
        "('RELOJES','PARED-01','Reloj de pared','9105.21.00',1,'07','18.75','203','0.6')",
        "insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) values "
        "('RELOJES','DESP-01','MEC-Q1','Mecanismo a cuarzo',1,0,0,0,0,-1)",
        "insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK) values ('AN0000','SD00000000000001X',"
        f"datevalue('15/01/{this_year}'),'Mecanismos a cuarzo',datevalue('15/01/{this_year + 1}'),'001',1)",
        "insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
        "('SD00000000000001X','MEC-Q1','07',500,'1.25',380,'9108.12.10','001','000')",
        "insert into DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,ARTPRE,RALCAN,EXTINT,EXTSBT,EXTNOF,EXTFOF,EXTFAC,DIPCAN,RIPCAN,"
        f"RIPMER,RIPPER,TRPMER,TRPPER,PRDMUL) values ('SD00000000000001X','MEC-Q1','001','000','1.25',120,'{EXPORT}',"
        f"{EXPORT_SUBITEM},'SD00000000000002Y',datevalue('20/02/{this_year}'),'A-0001',120,1,0,0,0,0,1)",
    )
    with oveldra.Connection.create(url(folder, INPUTS_FILE), oveldra.INPUTS) as inputs:
        for statement in statements:
            inputs.execute(statement)


def _make_nomenclature(folder: pathlib.Path) -> None:
    with oveldra.Connection.create(url(folder, NOMENCLATURE_FILE), oveldra.NOMENCLATURE) as nomenclature:
        for first, last, text, unit in (("9103.10", "00", "Despertadores a pila o acumulador", "07"),
                                        ("9105.21", "00", "Relojes de pared, eléctricos", "07")):
            nomenclature.execute("insert into NCM ([001],[002],[003],[010],[012]) values "
                                 f"('{first}','{last}','','{text}','{unit}')")


def _make_host(folder: pathlib.Path) -> None:
    """The host's tables are the host's: made with its own means, not with the component's."""
    with contextlib.closing(sqlite_host.connect(folder / HOST_FILE, "rwc")) as database, database:
        database.executescript(sqlite_host.TABLES)
        database.execute("insert into caratula values (?, 1, 1, 1)", (INTERNO,))
        # The row 0 of the host is no item of the declaration.
        database.executemany("insert into item values (?, ?, ?, ?, ?, 0, 0)",
                             [(INTERNO, 0, 200, 20, 10), (INTERNO, 1, 100, 10, 5), (INTERNO, 2, 100, 10, 5)])
        database.executemany("insert into groupsubitems values (?, ?, ?, ?, '07', ?, ?, ?, ?)",
                             [(INTERNO, 1, 1, "MEC-Q1", 80, 1.25, "9108.12.10", 100),
                              (INTERNO, 2, 2, "CAJ-D1", 60, 1, "9112.20.00", 60),
                              (INTERNO, 2, 3, "ESF-D1", 40, 1, "9114.30.00", 40)])
