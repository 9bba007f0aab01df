' A host that connects with classes of its own and calls the operations.

Sub PickThenCancel
    Tell "connected", component.ConectarDB(ProductsHost, Null, Null)
    component.Mostrar
    TellPick component
    component.Importar ' without a file number: its message comes between two openings of the same window
    component.Mostrar
    TellPick component
End Sub

Sub ConnectWithVariables
    Dim inputs, nomenclature, tornel
    Set inputs = ProductsHost
    nomenclature = Null
    Set tornel = New ListedHost
    Tell "connected", component.ConectarDB(inputs, nomenclature, tornel)
    Tell "kept", Not inputs Is Nothing And IsNull(nomenclature) And Not tornel Is Nothing
End Sub

Sub ConnectWithoutTheOptional
    Tell "connected", component.ConectarDB(ProductsHost)
    component.Mostrar
    TellPick component
End Sub

Sub ConnectDictionary
    Tell "connected", component.ConectarDB(CreateObject("Scripting.Dictionary"), Null, Null)
End Sub

Sub ConnectNothing
    Tell "connected", component.ConectarDB(Nothing, Null, Null)
End Sub

Sub ConnectNumber
    Tell "connected", component.ConectarDB(7, Null, Null)
End Sub

Sub ImportWithoutFileNumber
    component.Interno_Externo = ""
    component.Importar
    Tell "returned", True
End Sub

Sub ShowDischarges
    Dim host
    Set host = New ListedHost
    host.Answer "select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP", _
        "ARTDCL|ARTNRO|ARTITM|ARTSBT|RALCAN|ARTPRE", Array(Array("26001IT14000655K", Null, 3, "2", CCur(1.25), 62.333333))
    component.ConectarDB host, Null, Null
    component.Interno_Externo = "EX-1"
    component.IdSUB = "123"
    component.VerINSxSBT
    Tell "returned", True
End Sub

Sub ShowDeclarations
    Dim host
    Set host = New ListedHost
    host.Answer "select * from INTINS", "INTDCL|INTNRO|INTDES|INTCTC|INTFOF|INTVEN|INTIOK", _
        Array(Array("26001IT14000655K", "TOR00001", "Repuestos", Null, DateSerial(2026, 11, 16), Null, 1))
    component.ConectarDB host, Null, Null
    component.MostrarDIT
    Tell "returned", True
End Sub

Class RaisingHost
    Public Sub SetSql(text)
    End Sub

    Public Function OpenRecordset(ok)
        Err.Raise -2147217865, "RaisingHost", "El servidor del estudio no responde: señal caída."
    End Function

    Public Function Execute
        Execute = 0
    End Function
End Class

Sub ShowDischargesOfRaisingHost
    component.ConectarDB New RaisingHost, Null, Null
    component.VerINSxSBT
    Tell "returned", True
End Sub

' It says what went wrong when it is asked for.
Class RefusingHost
    Public Sub SetSql(text)
    End Sub

    Public Function OpenRecordset(ok)
        ok = False
        Set OpenRecordset = Nothing
    End Function

    Public Function Execute
        Execute = 0
    End Function

    Public Property Get LastErrorNumber
        LastErrorNumber = -2147217865
    End Property

    Public Property Get LastErrorDescription
        LastErrorDescription = "Falta la tabla de descargas."
    End Property
End Class

Sub ShowDischargesOfRefusingHost
    component.ConectarDB New RefusingHost, Null, Null
    component.VerINSxSBT
    Tell "returned", True
End Sub
