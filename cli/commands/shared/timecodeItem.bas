' As krz info --json has it.
Function TimeCodeDocument(c As QTTimeCodeKRZ, t As QTTrackKRZ) As JSONItem
  Dim document As New JSONItem
  document.Value("string") = t.TimeCodeToString(c)
  document.Value("dropFrame") = c.DropFrames
  document.Value("use24Hours") = c.Use24Hours
  document.Value("negative") = c.IsNeg
  document.Value("counter") = Not c.UseTimeCode
  document.Value("timeScale") = c.TimeScale
  document.Value("frameDuration") = c.FrameDuration
  document.Value("numberOfFrames") = c.NumberOfFrames
  document.Value("frameNumber") = c.FrameNumber
  document.Value("sourceName") = Nil
  If c.SourceName <> "" Then document.Value("sourceName") = c.SourceName
  Return document
End Function
