// Fragmented files of a real encoder against what a real demultiplexer finds in them, packet by
// packet. Skipped where ffmpeg and ffprobe are not installed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "saving_test.h"

namespace toolbox::testing {
namespace {

struct Packet {
  int64_t display = 0;
  int64_t decode = 0;
  uint32_t size = 0;
  uint64_t position = 0;
  bool is_sync = false;
};

/// The packets of a stream as the demultiplexer lists them; edits are left out of it.
std::vector<Packet> packets_of(const std::string& path, size_t stream) {
  std::istringstream lines(
      output_of("ffprobe -v error -ignore_editlist 1 -select_streams " + std::to_string(stream) +
                " -show_entries packet=pts,dts,size,pos,flags -of csv=p=0 " + path));
  std::vector<Packet> packets;
  std::string line;
  while (std::getline(lines, line)) {
    Packet packet;
    char flag = 0;
    long long display = 0;
    long long decode = 0;
    unsigned long long position = 0;
    if (std::sscanf(line.c_str(), "%lld,%lld,%u,%llu,%c", &display, &decode, &packet.size,
                    &position, &flag) != 5) {
      ADD_FAILURE() << "not a packet: " << line;
      break;
    }
    packet.display = display;
    packet.decode = decode;
    packet.position = position;
    packet.is_sync = flag == 'K';
    packets.push_back(packet);
  }
  return packets;
}

void expect_packets(const Media& media, const std::vector<Packet>& packets) {
  const auto samples = media.samples();
  ASSERT_TRUE(samples.ok()) << samples.status().message();
  const SampleTable& table = *samples.value();
  ASSERT_FALSE(packets.empty());
  ASSERT_EQ(packets.size(), table.sample_count());
  // The demultiplexer moves all display times by as much as keeps each behind its decode time.
  int64_t shift = 0;
  for (uint32_t i = 0; i < packets.size(); ++i) {
    const SampleTimes times = table.times(i).value();
    shift = std::max(shift, times.decode - times.display);
  }
  for (uint32_t i = 0; i < packets.size(); ++i) {
    SCOPED_TRACE("packet " + std::to_string(i));
    const SampleTimes times = table.times(i).value();
    const SampleLocation place = table.location(i).value();
    EXPECT_EQ(packets[i].decode, times.decode);
    EXPECT_EQ(packets[i].display, times.display + shift);
    EXPECT_EQ(packets[i].size, place.size);
    EXPECT_EQ(packets[i].position, place.offset);
    EXPECT_EQ(packets[i].is_sync, table.is_sync(i).value());
  }
}

TEST(FragmentsOfEncoders, HoldThePacketsThatADemultiplexerFinds) {
  if (output_of("ffmpeg -version").empty() || output_of("ffprobe -version").empty()) {
    GTEST_SKIP() << "ffmpeg or ffprobe is not installed";
  }
  const std::string source =
      "ffmpeg -v error -f lavfi -i testsrc=d=2:s=64x48 -f lavfi -i sine=d=2 -c:v mpeg4 -bf 2 -g 10 "
      "-c:a aac -movflags ";
  const struct {
    const char* flags;
    const char* more;
  } cases[] = {
      {"frag_keyframe+empty_moov", ""},
      {"frag_keyframe", ""},  // the first samples stand in the movie atom
      {"frag_keyframe+empty_moov+default_base_moof", ""},
      {"frag_keyframe+empty_moov+omit_tfhd_offset", ""},
      {"frag_keyframe+empty_moov+separate_moof", ""},
      {"empty_moov+frag_every_frame", ""},
      {"frag_keyframe+empty_moov+negative_cts_offsets", ""},
      {"empty_moov", "-frag_duration 300000"},
  };
  const ScratchFolder folder;
  const std::string path = folder.path("encoded.mp4");
  size_t fragmented = 0;
  for (const auto& each : cases) {
    SCOPED_TRACE(std::string(each.flags) + ' ' + each.more);
    const std::string command = source + each.flags + ' ' + each.more + " -y " + path;
    if (std::system((command + " 2>/dev/null").c_str()) != 0) continue;  // an encoder is missing
    const auto movie = open(path, FileAccess::kReading);
    ASSERT_NE(nullptr, movie);
    fragmented += movie->opened().tree.first_fragment().has_value();
    ASSERT_EQ(2u, movie->tracks().size());
    for (size_t stream = 0; stream < 2; ++stream) {
      SCOPED_TRACE("stream " + std::to_string(stream));
      expect_packets(*movie->tracks()[stream]->media(), packets_of(path, stream));
    }
    EXPECT_NEAR(2.0, static_cast<double>(movie->duration()) / movie->time_scale(), 0.1);
  }
  if (fragmented == 0) GTEST_SKIP() << "this ffmpeg has no encoder for mpeg4 or aac";
  EXPECT_EQ(std::size(cases), fragmented);
}

}  // namespace
}  // namespace toolbox::testing
