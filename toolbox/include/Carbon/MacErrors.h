/* Result codes of the toolbox calls. */
#ifndef KRZ_CARBON_MACERRORS_H
#define KRZ_CARBON_MACERRORS_H

enum {
  noErr = 0,
  dskFulErr = -34,        /* no room on the disk */
  nsvErr = -35,           /* unknown volume */
  ioErr = -36,            /* a read or write failed */
  bdNamErr = -37,         /* bad file name */
  eofErr = -39,           /* data beyond the end of a file */
  fnfErr = -43,           /* file not found */
  fBsyErr = -47,          /* in use by somebody else, or changed underneath */
  dupFNErr = -48,         /* there is such a file already */
  paramErr = -50,         /* bad argument */
  permErr = -54,          /* the file cannot be opened that way */
  wrPermErr = -61,        /* read-only */
  memFullErr = -108,      /* no memory, or a bound exceeded */
  nilHandleErr = -109,    /* an empty handle where data is needed */
  memWZErr = -111,        /* not a live handle */
  dirNFErr = -120,        /* folder not found */
  updPixMemErr = -125,    /* no memory to update pixels */
  userCanceledErr = -128, /* the user stopped the work */
  rgnOverflowErr = -147,
  pixMapTooDeepErr = -148,
  cDepthErr = -157,
  rgnTooBigErr = -500,
  errFSBadFSRef = -1401,
  couldNotResolveDataRef = -2000,
  badImageDescription = -2001,
  badPublicMovieAtom = -2002, /* the movie atom is damaged */
  cantFindHandler = -2003,
  cantOpenHandler = -2004,
  badComponentType = -2005,
  noMediaHandler = -2006,
  noDataHandler = -2007,
  invalidMedia = -2008,
  invalidTrack = -2009,
  invalidMovie = -2010,
  invalidSampleTable = -2011,
  invalidDataRef = -2012,
  invalidHandler = -2013,
  invalidDuration = -2014,
  invalidTime = -2015,
  cantPutPublicMovieAtom = -2016,
  badEditList = -2017,
  mediaTypesDontMatch = -2018,
  progressProcAborted = -2019,
  movieToolboxUninitialized = -2020,
  cantCreateSingleForkFile = -2022,
  invalidEditState = -2023,
  nonMatchingEditState = -2024,
  staleEditState = -2025,
  userDataItemNotFound = -2026,
  maxSizeToGrowTooSmall = -2027,
  badTrackIndex = -2028,
  trackIDNotFound = -2029,
  trackNotInMovie = -2030,
  timeNotInTrack = -2031,
  timeNotInMedia = -2032,
  badEditIndex = -2033,
  internalQuickTimeError = -2034,
  cantEnableTrack = -2035,
  invalidRect = -2036,
  invalidSampleNum = -2037,
  invalidChunkNum = -2038,
  invalidSampleDescIndex = -2039,
  invalidChunkCache = -2040,
  invalidSampleDescription = -2041,
  dataNotOpenForRead = -2042,
  dataNotOpenForWrite = -2043,
  dataAlreadyOpenForWrite = -2044,
  dataAlreadyClosed = -2045,
  endOfDataReached = -2046,
  dataNoDataRef = -2047,
  noMovieFound = -2048, /* the file holds no movie */
  invalidDataRefContainer = -2049,
  badDataRefIndex = -2050,
  noDefaultDataRef = -2051,
  couldNotUseAnExistingSample = -2052,
  featureUnsupported = -2053,
  kQTMetaDataInvalidMetaDataErr = -2173, /* a nil container, or one that is gone */
  kQTMetaDataInvalidItemErr = -2174,
  kQTMetaDataInvalidStorageFormatErr = -2175,
  kQTMetaDataInvalidKeyFormatErr = -2176,
  kQTMetaDataNoMoreItemsErr = -2177,
  kQTPropertyBadValueSizeErr = -2183,
  kQTPropertyNotSupportedErr = -2184,
  kQTPropertyReadOnlyErr = -2187
};

/* Results of handler calls, which are 32 bits wide. */
enum {
  badComponentInstance = -2147450879, /* 0x80008001: a nil or stale handler */
  badComponentSelector = -2147450878  /* 0x80008002: the handler does not implement the call */
};

#endif /* KRZ_CARBON_MACERRORS_H */
