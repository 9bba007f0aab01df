' The one component of a host.

Dim component
On Error Resume Next
Set component = CreateObject("oVELDRA.cloVELDRAMain")
If Err.Number <> 0 Then TellError "component"
On Error GoTo 0
