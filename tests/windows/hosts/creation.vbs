' Whether the classes can be made.

Sub MakeBoth
    Dim made
    On Error Resume Next
    Set made = CreateObject("oVELDRA.cloVELDRAMain")
    TellError "component"
    Set made = CreateObject("oVELDRAStore.ConexionDB")
    TellError "store"
End Sub
