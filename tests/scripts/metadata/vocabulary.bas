' Codes come from the class itself; those of user-data texts are MacRoman and compare as text.
Print QTMetaDataKRZ.kUserDataTextAlbum, QTMetaDataKRZ.kUserDataTextArtist, QTMetaDataKRZ.kUserDataTextFullName   ' expect: ©alb ©ART ©nam
Print QTMetaDataKRZ.kUserDataTextProducer, QTMetaDataKRZ.kUserDataTextProduct, QTMetaDataKRZ.kUserDataTextEditDate1   ' expect: ©prd ©PRD ©ed1
Print QTMetaDataKRZ.kUserDataTextURLLink = "©url", Len(QTMetaDataKRZ.kUserDataTextURLLink), LenB(QTMetaDataKRZ.kUserDataTextURLLink)   ' expect: True 4 4
Dim m As New QTMetaDataKRZ
Print m.Handle, m.Lasterror, m.kUserDataTextWriter      ' expect: 0 0 ©wrt

Print QTMetaDataKRZ.kQTMetaDataTypeUTF8, QTMetaDataKRZ.kQTMetaDataTypeFloat64BE, QTMetaDataKRZ.kQTMetaDataNoMoreItemsErr   ' expect: 1 24 -2177
Print "[" + QTMetaDataKRZ.kQTMetaDataItemPropertyID_Key + "]", QTMetaDataKRZ.kPropertyClass_MetaData, QTMetaDataKRZ.kUserDataMovieControllerType   ' expect: [key ] meta ctyp
Print m.kQTMetaDataStorageFormatiTunes                  ' expect: itms
