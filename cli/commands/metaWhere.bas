' krz meta where: every place that holds a key, in movies and their tracks.
#Include "metadata.bas"

Try
  Dim found As Integer
  For i As Integer = 0 To Args.Ubound - 1
    Dim m As Movie = OpenedMovie(Args(i))
    For t As Integer = 0 To m.TrackCountKRZ
      Dim place As String = "movie"
      Dim d As QTMetaDataKRZ
      If t = 0 Then
        d = m.MetaDataKRZ
      Else
        d = m.GetTrackIndexKRZ(t).MetaData
        place = "track " + Str(t)
      End If
      If d Is Nil Then Continue
      For Each item As QTMetaDataItemKRZ In Matching(d, Args(Args.Ubound))
        found = found + 1
        Print Args(i) + ": " + place + ", " + item.GetPropertyCode("sfmt") + " " + ItemKey(item) + ": " + ShownValue(item)
      Next
    Next
  Next
  If found = 0 Then Fail("no " + Args(Args.Ubound) + " there", 1)
Catch e As UsageError
  Fail(e.Message, 2)
End Try
