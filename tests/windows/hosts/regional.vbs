' A host that writes a number as its user has typed it, which is the second argument.

Sub ShowSubitem
    Dim component, host
    Set component = CreateObject("oVELDRA.cloVELDRAMain")
    Set host = New ListedHost
    host.Answer "select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP", _
        "ARTDCL|ARTNRO|ARTITM|ARTSBT|RALCAN|ARTPRE", Array(Array("26001IT14000655K", "CAJ-1", 3, "2", 1.25, 62.333333))
    component.ConectarDB host, Null, Null
    component.Interno_Externo = "EX-1"
    component.IdSUB = WScript.Arguments(1)
    component.VerINSxSBT
End Sub
