' Every shared method and constant of the vocabulary, in the order of the class, through the class and through an object.
Dim m As New QTMetaDataKRZ
Print m.kUserDataTextAlbum, m.kUserDataTextArtist, m.kUserDataTextAuthor, m.kUserDataTextChapter   ' expect: ©alb ©ART ©aut ©chp
Print m.kUserDataTextComment, m.kUserDataTextComposer, m.kUserDataTextCopyright, m.kUserDataTextCreationDate   ' expect: ©cmt ©com ©cpy ©day
Print m.kUserDataTextDescription, m.kUserDataTextDirector, m.kUserDataTextDisclaimer, m.kUserDataTextEncodedBy   ' expect: ©des ©dir ©dis ©enc
Print m.kUserDataTextFullName, m.kUserDataTextGenre, m.kUserDataTextHostComputer, m.kUserDataTextInformation   ' expect: ©nam ©gen ©hst ©inf
Print m.kUserDataTextKeywords, m.kUserDataTextMake, m.kUserDataTextModel, m.kUserDataTextOriginalArtist   ' expect: ©key ©mak ©mod ©ope
Print m.kUserDataTextOriginalFormat, m.kUserDataTextOriginalSource, m.kUserDataTextPerformers, m.kUserDataTextProducer   ' expect: ©fmt ©src ©prf ©prd
Print m.kUserDataTextPublisher, m.kUserDataTextProduct, m.kUserDataTextSoftware   ' expect: ©pub ©PRD ©swr
Print m.kUserDataTextSpecialPlaybackRequirements, m.kUserDataTextTrack, m.kUserDataTextWarning, m.kUserDataTextWriter   ' expect: ©req ©trk ©wrn ©wrt
Print m.kUserDataTextURLLink, m.kUserDataTextEditDate1   ' expect: ©url ©ed1
Print m.kQTMetaDataTypeBinary, m.kQTMetaDataTypeUTF8, m.kQTMetaDataTypeUTF16BE, m.kQTMetaDataTypeMacEncodedText   ' expect: 0 1 2 3
Print m.kQTMetaDataTypeJPEGImage, m.kQTMetaDataTypePNGImage, m.kQTMetaDataTypeSignedIntegerBE   ' expect: 13 14 21
Print m.kQTMetaDataTypeUnsignedIntegerBE, m.kQTMetaDataTypeFloat32BE, m.kQTMetaDataTypeFloat64BE, m.kQTMetaDataTypeBMPImage   ' expect: 22 23 24 27
Print m.kQTMetaDataTypeQuickTimeMetaData, m.kPropertyClass_MetaData, m.kQTMetaDataPropertyID_StorageFormats   ' expect: 28 meta fmts
Print m.kQTMetaDataPropertyID_OwnerType, m.kQTMetaDataPropertyID_Owner, m.kPropertyClass_MetaDataItem   ' expect: ownt ownr mdit
Print m.kQTMetaDataKeyFormatCommon, m.kQTMetaDataCommonKeyAuthor, m.kQTMetaDataCommonKeyComment   ' expect: comn auth cmmt
Print m.kQTMetaDataCommonKeyCopyright, m.kQTMetaDataCommonKeyDirector, m.kQTMetaDataCommonKeyDisplayName   ' expect: cprt dtor name
Print m.kQTMetaDataCommonKeyInformation, m.kQTMetaDataCommonKeyKeywords, m.kQTMetaDataCommonKeyProducer   ' expect: info keyw prod
Print m.kQTMetaDataCommonKeyAlbum, m.kQTMetaDataCommonKeyArtist, m.kQTMetaDataCommonKeyArtwork   ' expect: albm arts artw
Print m.kQTMetaDataCommonKeyChapterName, m.kQTMetaDataCommonKeyComposer, m.kQTMetaDataCommonKeyDescription   ' expect: chap comp desc
Print m.kQTMetaDataCommonKeyGenre, m.kQTMetaDataCommonKeyOriginalFormat, m.kQTMetaDataCommonKeyOriginalSource   ' expect: genr orif oris
Print m.kQTMetaDataCommonKeyPerformers, m.kQTMetaDataCommonKeySoftware, m.kQTMetaDataCommonKeyWriter   ' expect: perf soft wrtr
Print m.kQTMetaDataStorageFormatQuickTime, m.kQTMetaDataKeyFormatQuickTime, m.kQTMetaDataStorageFormatiTunes   ' expect: mdta mdta itms
Print m.kQTMetaDataKeyFormatiTunesShortForm, m.kQTMetaDataKeyFormatiTunesLongForm, m.kQTMetaDataStorageFormatUserData   ' expect: itsk itlk udta
Print m.kQTMetaDataKeyFormatUserData, m.kUserDataMovieControllerType, m.kUserDataName, m.kUserDataAnimatedGIFLoopCount   ' expect: udta ctyp name gifc
Print m.kQTAnimatedGIFLoopCountInfinite, m.kUserDataAnimatedGIFBufferingSize, m.kQTMetaDataInvalidMetaDataErr   ' expect: 0 gifb -2173
Print m.kQTMetaDataInvalidItemErr, m.kQTMetaDataInvalidStorageFormatErr, m.kQTMetaDataInvalidKeyFormatErr   ' expect: -2174 -2175 -2176
Print m.kQTMetaDataNoMoreItemsErr, m.kQTMetaDataItemPropertyID_Value, m.kQTMetaDataItemPropertyID_DataType   ' expect: -2177 valu dtyp
Print m.kQTMetaDataItemPropertyID_StorageFormat   ' expect: sfmt
Print "[" + m.kQTMetaDataItemPropertyID_Key + "]", m.kQTMetaDataItemPropertyID_KeyFormat, "[" + m.kQTMetaDataItemPropertyID_Locale + "]"   ' expect: [key ] keyf [loc ]

' Codes come from the class itself; those of user-data texts are MacRoman and compare as text.
Print QTMetaDataKRZ.kUserDataTextAlbum, QTMetaDataKRZ.kQTMetaDataTypeFloat64BE, QTMetaDataKRZ.kPropertyClass_MetaData   ' expect: ©alb 24 meta
Print QTMetaDataKRZ.kUserDataTextURLLink = "©url", Len(QTMetaDataKRZ.kUserDataTextURLLink), LenB(QTMetaDataKRZ.kUserDataTextURLLink)   ' expect: True 4 4
