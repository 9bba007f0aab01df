Option Explicit

' What a script tells the test that runs it: one line a value, with its name, its kind and its text.

Dim answersFile
Set answersFile = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)

Sub Tell(name, value)
    Dim kind, text
    kind = VarType(value)
    Select Case kind
    Case vbEmpty, vbNull, vbObject
        text = ""
    Case vbBoolean
        text = "False"
        If value Then text = "True"
    Case vbDate
        text = Year(value) & "-" & Right("0" & Month(value), 2) & "-" & Right("0" & Day(value), 2)
    Case vbString
        text = Replace(Replace(Replace(value, "\", "\\"), vbTab, "\t"), vbCrLf, "\n")
    Case Else
        text = CStr(value)
    End Select
    answersFile.WriteLine name & vbTab & kind & vbTab & text
End Sub

' The error of the line before, which is over with it. Without one its number is 0.
Sub TellError(name)
    Tell name & ".number", Err.Number
    Tell name & ".description", Err.Description
    Tell name & ".source", Err.Source
    Err.Clear
End Sub

Sub CloseAnswers
    Tell "end", True
    answersFile.Close
End Sub
