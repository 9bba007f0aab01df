' Hosts on the store's own connections. The folder of the databases is the second argument.

Function Place(name)
    Place = "sqlite:" & WScript.Arguments(1) & "\" & name & ".sqlite"
End Function

Function NewConnection
    Set NewConnection = CreateObject("oVELDRAStore.ConexionDB")
End Function

' A new database of a kind: "insumos", "ncm" or "tornel".
Function Created(kind)
    Set Created = NewConnection
    Created.Create Place(kind), kind
End Function

Function Opened(kind, readOnly)
    Set Opened = NewConnection
    Opened.Open Place(kind), readOnly
End Function

Function Run(connection, statement)
    connection.SetSql statement
    Run = connection.Execute
End Function

Sub InsertItem(tornel, id, values)
    Run tornel, "insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values ('IT-77'," & id & "," & values & ")"
End Sub

Sub InsertSubitem(tornel, id, idsub, values)
    Run tornel, "insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,NCM,FOB) values ('IT-77'," & _
        id & "," & idsub & "," & values & ")"
End Sub

Sub TellFields(records, names)
    Dim name
    For Each name In Split(names, "|")
        Tell name, records.Fields(name)
    Next
End Sub

Sub TellRows(connection, statement, names)
    Dim records, ok
    connection.SetSql statement
    Set records = connection.OpenRecordset(ok)
    Tell "ok", ok
    Tell "RecordCount", records.RecordCount
    Do Until records.EOF
        TellFields records, names
        records.MoveNext
    Loop
End Sub

Sub ImportDeclaration
    Dim component, inputs, tornel
    Set inputs = Created("insumos")
    Set tornel = Created("tornel")
    Run tornel, "insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values ('IT-77','1,5','2','1')"
    InsertItem tornel, 2, "'100','12,3456',Null,'0',Null"
    InsertItem tornel, 0, "'999','999','999','999','999'"
    InsertItem tornel, 1, "'100','10','5','8',Null"
    InsertSubitem tornel, 2, 12, "'ESF-D1','07','2,5','16','9114.30.00','40'"
    InsertSubitem tornel, 2, 11, "'CAJ-Ñ1',Null,'3','20','9112.20.00','60'"
    InsertSubitem tornel, 1, 10, "'MEC-Q1','07','3',Null,'9108.12.10','100'"

    Set component = CreateObject("oVELDRA.cloVELDRAMain")
    component.Interno_Externo = "IT-77"
    component.ADUANA = "001"
    Tell "connected", component.ConectarDB(inputs, Created("ncm"), tornel)
    component.Importar
    TellRows inputs, "select * from INTINS", "INTNRO|INTDCL|INTFOF|INTVEN|INTDES|INTADU|INTCTC|INTIOK"
    TellRows inputs, "select * from INS order by ARTITM,ARTSBT", _
        "ARTITM|ARTSBT|ARTNRO|ARTUNI|ARTCAT|ARTDSC|ARTPRE|ARTNCM"
End Sub

' The declaration is of this year, which is what the screen shows first.
Sub DeleteReadOnly
    Dim component, inputs
    Set inputs = Created("insumos")
    Run inputs, "insert into INTINS (INTNRO,INTDCL,INTFOF,INTVEN,INTDES,INTADU,INTIOK) values ('IT-77','26001IT14000655K',datevalue('01/06/" & _
        Year(Now) & "'),datevalue('01/06/2030'),'Relojes','001',1)"
    inputs.Close
    Set component = CreateObject("oVELDRA.cloVELDRAMain")
    component.ConectarDB Opened("insumos", True), Null, Null
    component.MostrarDIT
    Tell "returned", True
End Sub

Sub ShowDischargesOfUnopened
    Dim component
    Set component = CreateObject("oVELDRA.cloVELDRAMain")
    component.ConectarDB NewConnection, Null, Null
    component.VerINSxSBT
    Tell "returned", True
End Sub

' Names of columns as the store must find them, and the default member.
Sub ReadFields
    Dim inputs, records, got
    Set inputs = Created("insumos")
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('NANDU','Ñandúes')"
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('VACIO',Null)"
    inputs.SetSql "select * from CAT"
    Set records = inputs.OpenRecordset
    Tell "default", records("CATDES")
    Tell "letter case", records.Fields("catdes")
    On Error Resume Next
    got = records("NADA")
    TellError "unknown"
    records.MoveNext
    Tell "null", records("CATDES")
    records.MoveNext
    Tell "EOF", records.EOF
    records.MoveNext
    TellError "past the end"
    got = records("CATNRO")
    TellError "at the end"
    records.MoveFirst
    Tell "first", records("CATNRO")
End Sub

Sub Affect
    Dim inputs
    Set inputs = Created("insumos")
    Tell "insert", Run(inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')")
    Tell "insert", Run(inputs, "insert into CAT (CATNRO,CATDES) values ('B','dos')")
    Tell "update", Run(inputs, "update CAT set CATDES = 'tres'")
    Tell "delete", Run(inputs, "delete from CAT where CATNRO = 'C'")
End Sub

Sub FailToExecute
    Dim inputs
    Set inputs = Created("insumos")
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')"
    On Error Resume Next
    Run inputs, "insert into CAT values values"
    TellError "syntax"
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('a ','dos')"
    TellError "duplicate"
    Run inputs, "delete from NADA"
    TellError "table"
    Run NewConnection, "delete from CAT"
    TellError "unopened"
    inputs.Close
    Run inputs, "delete from CAT"
    TellError "closed"
End Sub

Sub FailToOpenRecordset
    Dim inputs, records, ok
    Set inputs = Created("insumos")
    inputs.SetSql "select * from NADA"
    ok = True
    Set records = inputs.OpenRecordset(ok)
    Tell "ok", ok
    Tell "nothing", records Is Nothing
    Tell "LastErrorNumber", inputs.LastErrorNumber
    Tell "LastErrorDescription", inputs.LastErrorDescription
    inputs.SetSql "select * from CAT"
    Set records = inputs.OpenRecordset(ok)
    Tell "empty ok", ok
    Tell "empty EOF", records.EOF
    Tell "empty RecordCount", records.RecordCount
End Sub

Sub WriteReadOnly
    Dim inputs
    Set inputs = Created("insumos")
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')"
    inputs.Close
    Set inputs = Opened("insumos", True)
    TellRows inputs, "select * from CAT", "CATNRO|CATDES"
    On Error Resume Next
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('B','dos')"
    TellError "insert"
End Sub

Sub OpenMissing
    Dim inputs
    On Error Resume Next
    Set inputs = Opened("insumos", False)
    TellError "open"
End Sub

Sub CreateTwice
    Dim inputs
    Set inputs = Created("insumos")
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')"
    inputs.Close
    On Error Resume Next
    Set inputs = Created("insumos")
    TellError "create"
    On Error GoTo 0
    TellRows Opened("insumos", False), "select * from CAT", "CATNRO|CATDES"
End Sub

Sub CreateUnknown
    Dim inputs
    On Error Resume Next
    Set inputs = Created("otra")
    TellError "create"
End Sub

Sub UseMemory
    Dim inputs
    Set inputs = NewConnection
    inputs.Create "sqlite::memory:", "insumos"
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')"
    TellRows inputs, "select * from CAT", "CATNRO|CATDES"
End Sub

' The second connection is another seat.
Sub HoldOthersOff
    Dim inputs, other, burst
    Set inputs = Created("insumos")
    Set other = Opened("insumos", False)
    Set burst = inputs.BeginBurst
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')"
    On Error Resume Next
    Run other, "insert into CAT (CATNRO,CATDES) values ('B','dos')"
    TellError "while it is open"
    TellRows other, "select * from CAT", "CATNRO"
    burst.Commit
    TellError "commit"
    Run other, "insert into CAT (CATNRO,CATDES) values ('B','dos')"
    TellError "afterwards"
    TellRows inputs, "select * from CAT", "CATNRO"
End Sub

' Nothing but its last reference ends it.
Sub ReleaseUncommitted
    Dim inputs, other, burst
    Set inputs = Created("insumos")
    Set other = Opened("insumos", False)
    Set burst = inputs.BeginBurst
    Run inputs, "insert into CAT (CATNRO,CATDES) values ('A','uno')"
    Set burst = Nothing
    TellRows other, "select * from CAT", "CATNRO"
End Sub
