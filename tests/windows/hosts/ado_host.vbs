' A host whose connection has the members of an ADO connection.

Class AdoField
    Private m_value

    Public Sub Hold(value)
        m_value = value
    End Sub

    Public Default Property Get Value
        Value = m_value
    End Property
End Class

Class AdoFields
    Private m_fields

    Private Sub Class_Initialize
        Set m_fields = CreateObject("Scripting.Dictionary")
        m_fields.CompareMode = vbTextCompare
    End Sub

    Public Sub Add(name, value)
        Dim field
        Set field = New AdoField
        field.Hold value
        m_fields.Add name, field
    End Sub

    Public Default Property Get Item(name)
        If Not m_fields.Exists(name) Then Err.Raise 3265, "AdoFields", "No hay columna " & name
        Set Item = m_fields.Item(name)
    End Property
End Class

Class AdoRecordset
    Private m_rows
    Private m_place

    Public Sub Fill(rows)
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

    Public Default Property Get Fields
        Set Fields = m_rows(m_place)
    End Property
End Class

Function AdoRow(names, values)
    Dim columns, column
    Set AdoRow = New AdoFields
    columns = Split(names, "|")
    For column = 0 To UBound(columns)
        AdoRow.Add columns(column), values(column)
    Next
End Function

' Its cursors are the server's unless it is told otherwise.
Class AdoConnection
    Public ConnectionString
    Private m_cursor

    Private Sub Class_Initialize
        ConnectionString = "Provider=Propio"
        m_cursor = 2
    End Sub

    Public Property Get CursorLocation
        CursorLocation = m_cursor
    End Property

    Public Property Let CursorLocation(value)
        m_cursor = value
    End Property

    Public Function Execute(text, affected, options)
        Tell "statement", text
        Tell "cursor", m_cursor
        affected = 0
        Set Execute = New AdoRecordset
        If Left(text, 17) = "select * from CAT" Then
            Execute.Fill Array(AdoRow("CATNRO|CATDES", Array("OTROS", "Otros")), _
                               AdoRow("CATNRO|CATDES", Array("RELOJES", "Relojes")))
        ElseIf Left(text, 17) = "select * from PRD" Then
            Execute.Fill Array(AdoRow("CATNRO|PRDNRO|PRDDES|PRDNCM|PRDUNI|PRDPAI|PRDPRE|PRDSUF", _
                Array("RELOJES", "PARED-01", "Reloj de pared ñandú", "9105.21.00.000B", "07", "212", 18.75, Null)))
        ElseIf Left(text, 13) = "select PRDNRO" Then
            Execute.Fill Array(AdoRow("PRDNRO|PRDDES|PRDNCM|PRDPAI", Array("DESP-01", "Despertador", "9103.10.00.000A", "203")), _
                               AdoRow("PRDNRO|PRDDES|PRDNCM|PRDPAI", Array("PARED-01", "Reloj de pared ñandú", "9105.21.00.000B", "212")))
        ElseIf Left(text, 20) = "select * from INTINS" Then
            Execute.Fill Array(AdoRow("INTDCL|INTNRO|INTDES|INTCTC|INTFOF|INTVEN|INTIOK", _
                Array("26001IT14000655K", "TOR00001", "Repuestos", Null, DateSerial(2026, 11, 16), Null, 1)))
        ElseIf Left(text, 6) = "delete" Then
            affected = 1
            Set Execute = Nothing
        Else
            Err.Raise -2147217900, "AdoConnection", "Consulta que no se entiende."
        End If
    End Function
End Class

Dim connection
Set connection = New AdoConnection

Sub Pick
    Tell "connected", component.ConectarDB(connection, Null, Null)
    component.Mostrar
    TellPick component
    Tell "cursor afterwards", connection.CursorLocation
End Sub

Sub DeleteDeclaration
    component.ConectarDB connection, Null, Null
    component.MostrarDIT
    Tell "cursor afterwards", connection.CursorLocation
End Sub

Sub ShowDischarges
    component.ConectarDB connection, Null, Null
    component.VerINSxSBT
    Tell "cursor afterwards", connection.CursorLocation
End Sub
