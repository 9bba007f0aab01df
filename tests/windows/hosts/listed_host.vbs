' A host's own connection, whose rows the script lists.

' Rows are arrays with a value for each of the names.
Class ListedRows
    Private m_names
    Private m_rows
    Private m_place

    Public Sub Fill(names, rows)
        m_names = Split(names, "|")
        m_rows = rows
        m_place = 0
    End Sub

    Public Property Get EOF
        EOF = m_place > UBound(m_rows)
    End Property

    Public Property Get RecordCount
        RecordCount = UBound(m_rows) + 1
    End Property

    Public Sub MoveFirst
        m_place = 0
    End Sub

    Public Sub MoveNext
        m_place = m_place + 1
    End Sub

    Public Default Property Get Fields(name)
        Dim column
        For column = 0 To UBound(m_names)
            If LCase(m_names(column)) = LCase(name) Then
                Fields = m_rows(m_place)(column)
                Exit Property
            End If
        Next
        Err.Raise 3265, "ListedRows", "No hay columna " & name
    End Property
End Class

' Answers statements by their beginnings, and tells each one that comes.
Class ListedHost
    Private m_text
    Private m_answers

    Private Sub Class_Initialize
        Set m_answers = CreateObject("Scripting.Dictionary")
    End Sub

    Public Sub Answer(beginning, names, rows)
        Dim listed
        Set listed = New ListedRows
        listed.Fill names, rows
        m_answers.Add beginning, listed
    End Sub

    Public Sub SetSql(text)
        Tell "statement", text
        m_text = text
    End Sub

    Public Function OpenRecordset(ok)
        Dim beginning
        Set OpenRecordset = Nothing
        ok = False
        For Each beginning In m_answers.Keys
            If Left(m_text, Len(beginning)) = beginning Then
                ok = True
                Set OpenRecordset = m_answers.Item(beginning)
                OpenRecordset.MoveFirst
                Exit Function
            End If
        Next
    End Function

    Public Function Execute
        Execute = 1
    End Function
End Class
