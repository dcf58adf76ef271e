' Every shared method and constant of the vocabulary, in the order of the class.

Print QTMetaDataKRZ.kUserDataTextAlbum                                  ' expect: ©alb
Print QTMetaDataKRZ.kUserDataTextArtist                                 ' expect: ©ART
Print QTMetaDataKRZ.kUserDataTextAuthor                                 ' expect: ©aut
Print QTMetaDataKRZ.kUserDataTextChapter                                ' expect: ©chp
Print QTMetaDataKRZ.kUserDataTextComment                                ' expect: ©cmt
Print QTMetaDataKRZ.kUserDataTextComposer                               ' expect: ©com
Print QTMetaDataKRZ.kUserDataTextCopyright                              ' expect: ©cpy
Print QTMetaDataKRZ.kUserDataTextCreationDate                           ' expect: ©day
Print QTMetaDataKRZ.kUserDataTextDescription                            ' expect: ©des
Print QTMetaDataKRZ.kUserDataTextDirector                               ' expect: ©dir
Print QTMetaDataKRZ.kUserDataTextDisclaimer                             ' expect: ©dis
Print QTMetaDataKRZ.kUserDataTextEncodedBy                              ' expect: ©enc
Print QTMetaDataKRZ.kUserDataTextFullName                               ' expect: ©nam
Print QTMetaDataKRZ.kUserDataTextGenre                                  ' expect: ©gen
Print QTMetaDataKRZ.kUserDataTextHostComputer                           ' expect: ©hst
Print QTMetaDataKRZ.kUserDataTextInformation                            ' expect: ©inf
Print QTMetaDataKRZ.kUserDataTextKeywords                               ' expect: ©key
Print QTMetaDataKRZ.kUserDataTextMake                                   ' expect: ©mak
Print QTMetaDataKRZ.kUserDataTextModel                                  ' expect: ©mod
Print QTMetaDataKRZ.kUserDataTextOriginalArtist                         ' expect: ©ope
Print QTMetaDataKRZ.kUserDataTextOriginalFormat                         ' expect: ©fmt
Print QTMetaDataKRZ.kUserDataTextOriginalSource                         ' expect: ©src
Print QTMetaDataKRZ.kUserDataTextPerformers                             ' expect: ©prf
Print QTMetaDataKRZ.kUserDataTextProducer                               ' expect: ©prd
Print QTMetaDataKRZ.kUserDataTextPublisher                              ' expect: ©pub
Print QTMetaDataKRZ.kUserDataTextProduct                                ' expect: ©PRD
Print QTMetaDataKRZ.kUserDataTextSoftware                               ' expect: ©swr
Print QTMetaDataKRZ.kUserDataTextSpecialPlaybackRequirements            ' expect: ©req
Print QTMetaDataKRZ.kUserDataTextTrack                                  ' expect: ©trk
Print QTMetaDataKRZ.kUserDataTextWarning                                ' expect: ©wrn
Print QTMetaDataKRZ.kUserDataTextWriter                                 ' expect: ©wrt
Print QTMetaDataKRZ.kUserDataTextURLLink                                ' expect: ©url
Print QTMetaDataKRZ.kUserDataTextEditDate1                              ' expect: ©ed1

Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeBinary) + "]"                   ' expect: [0]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeUTF8) + "]"                     ' expect: [1]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeUTF16BE) + "]"                  ' expect: [2]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeMacEncodedText) + "]"           ' expect: [3]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeJPEGImage) + "]"                ' expect: [13]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypePNGImage) + "]"                 ' expect: [14]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeSignedIntegerBE) + "]"          ' expect: [21]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeUnsignedIntegerBE) + "]"        ' expect: [22]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeFloat32BE) + "]"                ' expect: [23]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeFloat64BE) + "]"                ' expect: [24]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeBMPImage) + "]"                 ' expect: [27]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataTypeQuickTimeMetaData) + "]"        ' expect: [28]
Print "[" + Str(QTMetaDataKRZ.kPropertyClass_MetaData) + "]"                 ' expect: [meta]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataPropertyID_StorageFormats) + "]"    ' expect: [fmts]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataPropertyID_OwnerType) + "]"         ' expect: [ownt]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataPropertyID_Owner) + "]"             ' expect: [ownr]
Print "[" + Str(QTMetaDataKRZ.kPropertyClass_MetaDataItem) + "]"             ' expect: [mdit]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataKeyFormatCommon) + "]"              ' expect: [comn]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyAuthor) + "]"              ' expect: [auth]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyComment) + "]"             ' expect: [cmmt]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyCopyright) + "]"           ' expect: [cprt]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyDirector) + "]"            ' expect: [dtor]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyDisplayName) + "]"         ' expect: [name]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyInformation) + "]"         ' expect: [info]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyKeywords) + "]"            ' expect: [keyw]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyProducer) + "]"            ' expect: [prod]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyAlbum) + "]"               ' expect: [albm]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyArtist) + "]"              ' expect: [arts]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyArtwork) + "]"             ' expect: [artw]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyChapterName) + "]"         ' expect: [chap]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyComposer) + "]"            ' expect: [comp]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyDescription) + "]"         ' expect: [desc]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyGenre) + "]"               ' expect: [genr]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyOriginalFormat) + "]"      ' expect: [orif]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyOriginalSource) + "]"      ' expect: [oris]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyPerformers) + "]"          ' expect: [perf]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeySoftware) + "]"            ' expect: [soft]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataCommonKeyWriter) + "]"              ' expect: [wrtr]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataStorageFormatQuickTime) + "]"       ' expect: [mdta]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataKeyFormatQuickTime) + "]"           ' expect: [mdta]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataStorageFormatiTunes) + "]"          ' expect: [itms]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataKeyFormatiTunesShortForm) + "]"     ' expect: [itsk]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataKeyFormatiTunesLongForm) + "]"      ' expect: [itlk]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataStorageFormatUserData) + "]"        ' expect: [udta]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataKeyFormatUserData) + "]"            ' expect: [udta]
Print "[" + Str(QTMetaDataKRZ.kUserDataMovieControllerType) + "]"            ' expect: [ctyp]
Print "[" + Str(QTMetaDataKRZ.kUserDataName) + "]"                           ' expect: [name]
Print "[" + Str(QTMetaDataKRZ.kUserDataAnimatedGIFLoopCount) + "]"           ' expect: [gifc]
Print "[" + Str(QTMetaDataKRZ.kQTAnimatedGIFLoopCountInfinite) + "]"         ' expect: [0]
Print "[" + Str(QTMetaDataKRZ.kUserDataAnimatedGIFBufferingSize) + "]"       ' expect: [gifb]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataInvalidMetaDataErr) + "]"           ' expect: [-2173]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataInvalidItemErr) + "]"               ' expect: [-2174]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataInvalidStorageFormatErr) + "]"      ' expect: [-2175]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataInvalidKeyFormatErr) + "]"          ' expect: [-2176]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataNoMoreItemsErr) + "]"               ' expect: [-2177]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataItemPropertyID_Value) + "]"         ' expect: [valu]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataItemPropertyID_DataType) + "]"      ' expect: [dtyp]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataItemPropertyID_StorageFormat) + "]" ' expect: [sfmt]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataItemPropertyID_Key) + "]"           ' expect: [key ]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataItemPropertyID_KeyFormat) + "]"     ' expect: [keyf]
Print "[" + Str(QTMetaDataKRZ.kQTMetaDataItemPropertyID_Locale) + "]"        ' expect: [loc ]
