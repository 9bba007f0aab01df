' A listed host with products, and what a host reads after its user has picked one.

Function ProductsHost
    Set ProductsHost = New ListedHost
    ProductsHost.Answer "select * from CAT", "CATNRO|CATDES", Array(Array("OTROS", "Otros"), Array("RELOJES", "Relojes"))
    ProductsHost.Answer "select PRDNRO,PRDDES,PRDNCM,PRDPAI from PRD", "PRDNRO|PRDDES|PRDNCM|PRDPAI", _
        Array(Array("DESP-01", "Despertador", "9103.10.00.000A", "203"), _
              Array("PARED-01", "Reloj de pared ñandú", "9105.21.00.000B", "212"))
    ProductsHost.Answer "select * from PRD", "CATNRO|PRDNRO|PRDDES|PRDNCM|PRDUNI|PRDPAI|PRDPRE|PRDSUF", _
        Array(Array("RELOJES", "PARED-01", "Reloj de pared ñandú", "9105.21.00.000B", "07", "212", 18.75, "ZA(2)"))
End Function

Sub TellPick(component)
    Tell "OK", component.OK
    Tell "CATNRO", component.CATNRO
    Tell "PRDNRO", component.PRDNRO
    Tell "PRDDES", component.PRDDES
    Tell "PRDNCM", component.PRDNCM
    Tell "PRDPAI", component.PRDPAI
    Tell "PRDPRE", component.PRDPRE
    Tell "PRDSUF", component.PRDSUF
    Tell "PRDUNI", component.PRDUNI
End Sub
