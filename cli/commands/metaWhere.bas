' krz meta where: every place that holds a key, in a movie and its tracks.
#Include "metadata.bas"

Try
  Dim found As Integer
  Dim m As Movie = OpenedMovie(Args(0))
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
    For Each item As QTMetaDataItemKRZ In Matching(d, Args(1))
      found = found + 1
      Print Args(0) + ": " + place + ", " + item.GetPropertyCode("sfmt") + " " + ItemKey(item) + ": " + ShownValue(item)
    Next
  Next
  If found = 0 Then Fail(Args(0) + " has no " + Args(1), 1)
Catch e As UsageError
  Fail(e.Message, 2)
End Try
