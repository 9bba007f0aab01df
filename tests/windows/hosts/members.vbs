' The members of the component, by name.

Sub ReadEachInAnyLetterCase
    TellPick component
    Tell "ok", component.ok
    Tell "CATnro", component.CATnro
    Tell "prdpre", component.prdpre
End Sub

Sub WriteEach
    On Error Resume Next
    component.BaseNcm = "C:\bases\ncm.mdb"
    TellError "BaseNcm"
    component.BaseTornel = "C:\bases\tornel.mdb"
    TellError "BaseTornel"
    component.BaseInsumos = "C:\bases\insumos.mdb"
    TellError "BaseInsumos"
    component.Interno_Externo = "TOR00001"
    TellError "Interno_Externo"
    component.ADUANA = "073"
    TellError "ADUANA"
    component.IdSUB = "7"
    TellError "IdSUB"
End Sub

' The text is a variable's, which the component gets by reference.
Sub WriteVariables
    Dim text
    text = "TOR00001"
    component.Interno_Externo = text
    component.ADUANA = text
    component.BaseNcm = text
    Tell "text", text
End Sub

Sub ReadWriteOnly
    Dim got
    On Error Resume Next
    got = component.BaseNcm
    TellError "BaseNcm"
    got = component.BaseTornel
    TellError "BaseTornel"
    got = component.BaseInsumos
    TellError "BaseInsumos"
    got = component.Interno_Externo
    TellError "Interno_Externo"
    got = component.ADUANA
    TellError "ADUANA"
    got = component.IdSUB
    TellError "IdSUB"
End Sub

Sub WriteReadOnly
    On Error Resume Next
    component.OK = True
    TellError "OK"
    component.CATNRO = "x"
    TellError "CATNRO"
    component.PRDDES = "x"
    TellError "PRDDES"
    component.PRDNCM = "x"
    TellError "PRDNCM"
    component.PRDPAI = "x"
    TellError "PRDPAI"
    component.PRDPRE = 1
    TellError "PRDPRE"
    component.PRDSUF = "x"
    TellError "PRDSUF"
    component.PRDUNI = "x"
    TellError "PRDUNI"
    component.PRDNRO = "x"
    TellError "PRDNRO"
End Sub

Sub UseUnknown
    Dim got
    On Error Resume Next
    got = component.Nada
    TellError "read"
    component.Nada = 1
    TellError "written"
    component.Nada
    TellError "called"
End Sub

Sub CallWithTooMany
    On Error Resume Next
    component.Mostrar 1
    TellError "Mostrar"
    component.ConectarDB Null, Null, Null, Null
    TellError "ConectarDB"
End Sub

Sub CallEach
    Dim host
    Set host = ProductsHost
    host.Answer "select * from INTINS", "INTDCL", Array()
    host.Answer "select ARTDCL", "ARTDCL", Array()
    component.Interno_Externo = "TOR00001"
    Tell "ConectarDB", component.ConectarDB(host, Null, Null)
    component.Mostrar
    Tell "Mostrar", True
    component.Importar
    Tell "Importar", True
    component.MostrarDIT
    Tell "MostrarDIT", True
    component.VerINSxSBT
    Tell "VerINSxSBT", True
End Sub

Sub NumberSubitem(text)
    On Error Resume Next
    component.IdSUB = CStr(text) ' the text itself, not the variable
    TellError "IdSUB"
End Sub
