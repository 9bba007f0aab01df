' A host with a declaration of this year and what was discharged of it. The folder of the database is the second argument.

Const declaration = "26001IT14000655K"

Sub InsertDischarge(inputs, values)
    Run inputs, "insert into DIP (ARTDCL,EXTINT,EXTSBT,ARTITM,ARTSBT,EXTNOF,EXTFOF,ARTNRO,RIPCAN,PRDMUL,DIPCAN,RIPPER,RIPMER,ARTPRE,RALCAN,EXTFAC,TRPPER,TRPMER) values ('" & _
        declaration & "','EX-1',1,1,0," & values & ",0,0)"
End Sub

Function InputsWithDischarges
    Dim thisYear
    thisYear = "/" & Year(Date) & "')"
    Set InputsWithDischarges = Created("insumos")
    Run InputsWithDischarges, "insert into INTINS (INTNRO,INTDCL,INTFOF,INTVEN,INTDES,INTADU,INTIOK) values ('IT-77','" & _
        declaration & "',datevalue('19/01" & thisYear & ",datevalue('19/11" & thisYear & ",'Relojes','001',1)"
    InsertDischarge InputsWithDischarges, "'26001EC01000002B',datevalue('02/03" & thisYear & _
        ",'CAJ-Ñ1',1.5,1,10,0.5,2.25,34.938,3,'0001-00000815'"
    InsertDischarge InputsWithDischarges, "'26001EC01000001A',datevalue('01/03" & thisYear & _
        ",'MECANISMO-DE-CUARZO-Q1',0.33333333,1,2,0,0,62.333333,2.5,'FAC-7'"
End Function

Sub ShowDeclarations
    Dim component
    Set component = CreateObject("oVELDRA.cloVELDRAMain")
    component.ConectarDB InputsWithDischarges, Null, Null
    component.MostrarDIT
    Tell "returned", True
End Sub
