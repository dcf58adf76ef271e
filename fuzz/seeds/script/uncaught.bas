' An uncaught exception is reported with the place of the object that was Nil.
Function Find(name As String) As MemoryBlock
  Print "finding", name        ' expect: finding moov
  Return Nil
End Function
Dim text As String = "kept"
Try
  Print Find("moov").Size + 1
Finally
  Print text                   ' expect: kept
End Try
' expect-error: uncaught.bas:8:9: NilObjectException: Find("moov") is Nil
