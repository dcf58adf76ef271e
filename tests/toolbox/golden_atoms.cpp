#include "golden_atoms.h"

namespace toolbox {

namespace {
const char kIdentity[] =
    "00010000 00000000 00000000 00000000 00010000 00000000 00000000 00000000 40000000";
Golden whole(Bytes payload) {
  const size_t needed = payload.size();
  return {std::move(payload), needed};
}
Bytes matrix() { return hex(kIdentity); }
}  // namespace

#define GOLDEN(Atom) \
  template <>        \
  std::vector<Golden> golden_atoms<Atom>()

GOLDEN(MovieHeaderAtom) {
  const Bytes end = hex("00010000 0100 00000000000000000000") + matrix() +
                    hex("00000001 00000002 00000003 00000004 00000005 00000006 00000007");
  return {whole(hex("00000000 D0000001 D0000002 00000258 00001770") + end),
          whole(hex("01000000 00000000D0000001 00000000D0000002 00000258 0000000100001770") + end)};
}
GOLDEN(TrackHeaderAtom) {
  const Bytes end =
      hex("0000000000000000 FFFF 0001 0100 0000") + matrix() + hex("01400000 00F00000");
  return {
      whole(hex("0000000F D0000001 D0000002 00000002 00000000 00001770") + end),
      whole(hex("0100000F 00000000D0000001 00000000D0000002 00000002 00000000 FFFFFFFFFFFFFFFF") +
            end),
      {hex("00000007 D0000001 D0000002 00000002 00000000 00001770") + end + hex("BEEF"), 84}};
}
GOLDEN(ApertureAtom) { return {whole(hex("00000000 028E8BA3 01E00000"))}; }
GOLDEN(TrackReferenceAtom) { return {{hex("00000002 00000000 00000003"), 0}, {{}, 0}}; }
GOLDEN(EditListAtom) {
  return {whole(hex("00000000 00000002 | 00000258 FFFFFFFF 00010000 | 00001770 00000401 00010000")),
          whole(hex("01000000 00000001 | 0000000000000258 FFFFFFFFFFFFFFFF 00010000")),
          whole(hex("00000000 00000000"))};
}
GOLDEN(MediaHeaderAtom) {
  return {
      whole(hex("00000000 D0000001 D0000002 0000AC44 00000CEE 55C4 0000")),
      whole(hex("01000000 00000000D0000001 00000000D0000002 0000AC44 0000000200000CEE 15C7 0000"))};
}
GOLDEN(HandlerAtom) {
  return {{hex("00000000 6D686C72 76696465 6170706C 00000001 00000002 | 05 566964656F"), 24},
          {hex("00000000 00000000 736F756E 00000000 00000000 00000000 | 536F756E6400"), 24}};
}
GOLDEN(VideoMediaHeaderAtom) { return {whole(hex("00000001 0040 8000 8001 8002"))}; }
GOLDEN(SoundMediaHeaderAtom) { return {whole(hex("00000000 FF80 0000"))}; }
GOLDEN(GenericMediaInfoAtom) { return {whole(hex("00000000 0040 8000 8000 8000 0000 0000"))}; }
GOLDEN(TimecodeInfoAtom) {
  // Fields, then the Pascal string of the font's name.
  return {{hex("00000001 0016 0001 000C 0000 FFFF00008000 000000FF1234 05 436F757269"), 24}};
}
GOLDEN(DataReferenceAtom) {
  return {
      whole(hex("00000000 00000002 | 0000000C 616C6973 00000001 | 00000010 75726C20 00000000 "
                "612E6D00"))};
}
GOLDEN(DataReferenceEntry) { return {{hex("00000001"), 4}, {hex("00000000 612E6D6F7600"), 4}}; }
GOLDEN(SampleDescriptionAtom) {
  return {whole(hex("00000000 00000002 | 00000010 74657874 000000000000 0001 | 00000008 6A756E6B")),
          {hex("00000000 00000000 DEAD"), 8}};
}
GOLDEN(DescriptionHeader) { return {{hex("000000000000 0001 1234"), 8}}; }
GOLDEN(VideoDescription) {
  return {
      {hex("000000000000 0001 | 0000 0001 6170706C 00000200 00000400 0140 00F0 00480000 00480000 "
           "00000000 0001 03526177") +
           Bytes(28) + hex("0018 FFFF | 00000010 70617370 0000000A 0000000B"),
       78}};
}
GOLDEN(SoundDescription) {
  return {
      {hex("000000000000 0001 | 0001 0000 00000000 0002 0010 FFFE 0000 AC440000 | 00000400"), 28}};
}
GOLDEN(TimeToSampleAtom) {
  return {{hex("00000000 00000002 | 00000064 00000014 | 00000001 00000000 | 0BAD"), 24}};
}
GOLDEN(CompositionOffsetAtom) {
  return {whole(hex("00000000 00000001 | 00000003 FFFFFFEC")),
          whole(hex("01000000 00000001 | 00000003 FFFFFFEC"))};
}
GOLDEN(SyncSampleAtom) {
  return {whole(hex("00000000 00000002 | 00000001 0000000D")), whole(hex("00000000 00000000"))};
}
GOLDEN(PartialSyncSampleAtom) { return {whole(hex("00000000 00000001 | 00000007"))}; }
GOLDEN(SampleToChunkAtom) {
  return {
      whole(hex("00000000 00000002 | 00000001 0000000A 00000001 | 0000000B 00000003 00000002"))};
}
GOLDEN(SampleSizeAtom) {
  return {whole(hex("00000000 00000000 00000002 | 00000064 00000032")),
          {hex("00000000 00000004 FFFFFFFF"), 12}};
}
GOLDEN(CompactSampleSizeAtom) {
  return {whole(hex("00000000 000000 04 00000003 | 12 30")),
          whole(hex("00000000 000000 08 00000003 | 010203")),
          whole(hex("00000000 000000 10 00000002 | 0100 0200"))};
}
GOLDEN(ChunkOffsetAtom) { return {whole(hex("00000000 00000002 | 00000030 FFFFFFFF"))}; }
GOLDEN(WideChunkOffsetAtom) {
  return {whole(hex("00000000 00000002 | 0000000000000030 0000000100000000"))};
}
GOLDEN(SampleDependencyAtom) { return {{hex("00000000 | 20 10 18"), 4}}; }
GOLDEN(CompositionShiftAtom) {
  return {whole(hex("00000000 00000028 FFFFFFEC 00000028 00000000 00001770")),
          whole(hex("01000000 0000000000000028 FFFFFFFFFFFFFFEC 0000000000000028 0000000000000000 "
                    "0000000100001770"))};
}
GOLDEN(FileTypeAtom) { return {{hex("71742020 20050300 71742020 6D703431 | 0102"), 8}}; }
GOLDEN(DataCompressionAtom) { return {whole(hex("7A6C6962"))}; }
GOLDEN(CompressedMovieAtom) { return {{hex("00000400 | 789C0300"), 4}}; }
GOLDEN(TrackExtendsAtom) {
  return {whole(hex("00000000 00000002 00000001 00000400 00000180 01010000"))};
}
GOLDEN(MovieExtendsHeaderAtom) {
  return {whole(hex("00000000 00001770")), whole(hex("01000000 0000000100001770"))};
}
GOLDEN(FragmentHeaderAtom) { return {whole(hex("00000000 00000007"))}; }
GOLDEN(TrackFragmentHeaderAtom) {
  return {whole(hex("00020000 00000002")),
          whole(hex("0000003B 00000002 | 0000000100000030 00000001 00000400 00000180 01010000")),
          {hex("00020020 00000001 | 02000000 | 0BAD"), 12}};
}
GOLDEN(TrackFragmentTimeAtom) {
  return {whole(hex("00000000 FFFFFFFF")), whole(hex("01000000 0000000100000400"))};
}
GOLDEN(TrackRunAtom) {
  return {whole(hex("00000F05 00000002 FFFFFFF8 02000000 | 00000400 00000010 01010000 00000200 | "
                    "00000401 00000011 01010001 00000201")),
          whole(hex("01000800 00000003 | FFFFFFEC 00000000 00000014")),
          {hex("00000000 FFFFFFFF | 0BAD"), 8},
          whole(hex("00000201 00000001 00000030 | 00000064"))};
}

}  // namespace toolbox
