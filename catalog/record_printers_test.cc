// Tests of the record printers' exact lines: field order, labels and their
// blanks, empty texts, named numbers with their fallbacks, times, the GUID,
// the remote-master residence and the snapshot lines' trailing blanks.
#include "catalog/record_printers.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace {

template <typename Record>
std::string Printed(void (*print)(const Record&, FILE*), const Record& record) {
  char* data = nullptr;
  size_t size = 0;
  FILE* out = open_memstream(&data, &size);
  print(record, out);
  fclose(out);
  std::string text(data, size);
  free(data);
  return text;
}

class RecordPrintersTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("TZ", "UTC", 1);
    tzset();

    memset(&image_, 0, sizeof image_);
    strcpy(image_.MasterServer, "master1");
    strcpy(image_.BackupID, "client1_1700000000");
    strcpy(image_.ClientName, "client1");
    image_.BackupTime = 1700000000;
    strcpy(image_.PolicyName, "pol1");
    image_.ClientType = 13;
    strcpy(image_.SLPName, "slp1");
    image_.SLPState = 9;  // not started, inactive
    image_.TimeInProcess = 1700000100;
    strcpy(image_.DataClassificationID, "no-such-class");
    image_.SLPVersion = 2;
    for (int i = 0; i < 16; ++i) image_.OriginMasterServerID[i] = static_cast<unsigned char>(i);
    image_.CreatedDateTime = 1700000000;

    memset(&copy_, 0, sizeof copy_);
    copy_.CopyKey = 7;
    strcpy(copy_.MasterServer, "master1");
    strcpy(copy_.BackupID, "client1_1700000000");
    copy_.CopyNumber = 2;
    copy_.SLPIndex = 3;
    copy_.CopyType = 3;
    copy_.ExpireTime = 1800000000;
    copy_.ExpireLCTime = 1750000000;
    copy_.TryToKeepTime = 3600;
    strcpy(copy_.Residence, "*Remote*Master*");
    copy_.CopyState = 2;
    copy_.JobID = 4711;
    copy_.RetentionType = 1;
    copy_.MPXState = 1;
    copy_.RetryCount = 4;
    copy_.LastRetryTime = 1700000500;
    strcpy(copy_.DestinationID, "target-a");
    copy_.Source = 1;
    copy_.Replica = 1;
    copy_.DataFormat = 2;

    memset(&fragment_, 0, sizeof fragment_);
    fragment_.FragmentKey = 9;
    strcpy(fragment_.MasterServer, "master1");
    strcpy(fragment_.BackupID, "client1_1700000000");
    fragment_.CopyNumber = 1;
    fragment_.FragmentNumber = 3;
    strcpy(fragment_.MediaID, "@aaaab");
    strcpy(fragment_.MediaServer, "media1");
    strcpy(fragment_.StorageServer, "dd1");
    fragment_.MediaType = 0;
    fragment_.MediaSubType = 6;
    fragment_.FragmentState = 1;
    fragment_.FragmentSize = 5368709120LL;
    fragment_.DeleteHeader = 1;
    strcpy(fragment_.FragmentID, "client1_1700000000_C1_F3");
    strcpy(fragment_.MediaDescription, "pool1");

    memset(&snapshot_, 0, sizeof snapshot_);
    strcpy(snapshot_.BackupID, "client1_1700000000");
    snapshot_.CopyNumber = 2;
    strcpy(snapshot_.StorageServerName, "array1");
    strcpy(snapshot_.StorageServerType, "NetApp");
    strcpy(snapshot_.DiskMediaID, "@snap7");
    strcpy(snapshot_.SnapshotName, "snap_001");
  }

  EMM_Image image_;
  EMM_ImageCopy copy_;
  EMM_ImageFragment fragment_;
  EMM_SnapshotInfo snapshot_;
};

TEST_F(RecordPrintersTest, ImageLines) {
  EXPECT_EQ("V7.6.0 I master1 client1_1700000000 client1 1700000000 pol1 13 0 slp1 1 true "
            "1700000100 no-such-class 2  {00010203-0405-0607-0809-0a0b0c0d0e0f} 0 0 "
            "1700000000\n",
            Printed(PrintImageShort, image_));
  EXPECT_EQ("client1_1700000000\n", Printed(PrintImageBrief, image_));
  EXPECT_EQ("Image:\n"
            " Master Server                 : master1\n"
            " Backup ID                     : client1_1700000000\n"
            " Client                        : client1\n"
            " Backup Time                   : 1700000000 (2023/11/14 22:13:20)\n"
            " Policy                        : pol1\n"
            " Client Type                   : 13\n"
            " Schedule Type                 : 0\n"
            " Storage Lifecycle Policy      : slp1\n"
            " Storage Lifecycle State       : 1 (NOT_STARTED) \n"
            " Storage Lifecycle Is Inactive : true\n"
            " Time In Process               : 1700000100 (2023/11/14 22:15:00)\n"
            " Data Classification ID        : no-such-class\n"
            " Version Number                : 2\n"
            " OriginMasterServer            : (none specified)\n"
            " OriginMasterServerID          : {00010203-0405-0607-0809-0a0b0c0d0e0f}\n"
            " Import From Replica Time      : 0 (0 secs)\n"
            " Required Expiration Date      : 0 (0 secs)\n"
            " Created Date Time             : 1700000000 (2023/11/14 22:13:20)\n"
            "\n",
            Printed(PrintImageUser, image_));
}

TEST_F(RecordPrintersTest, EmptyTextsAndStatesOutsideTheTable) {
  EMM_Image empty;
  memset(&empty, 0, sizeof empty);
  empty.SLPState = 27;  // 19 without the inactive bit: no name
  EXPECT_EQ("V7.6.0 I *NULL* *NULL* *NULL* 0 *NULL* 0 0 *NULL* 19 true 0 *NULL* 0  "
            "{00000000-0000-0000-0000-000000000000} 0 0 0\n",
            Printed(PrintImageShort, empty));
  EXPECT_EQ("*NULL*\n", Printed(PrintImageBrief, empty));
  std::string user = Printed(PrintImageUser, empty);
  EXPECT_NE(std::string::npos,
            user.find(" Storage Lifecycle State       : 19 (INVALID_IMAGE_LIFECYCLE_STATE)\n"));
  EXPECT_NE(std::string::npos, user.find(" Master Server                 : (none specified)\n"));
  EXPECT_NE(std::string::npos, user.find(" Storage Lifecycle Is Inactive : true\n"));
}

TEST_F(RecordPrintersTest, CopyLines) {
  // The expire LC time stands at fields 13 and 15.
  EXPECT_EQ("V7.6.0 C master1 client1_1700000000 2 1800000000 3600 *Remote*Master* 2 4711 1 1 1 "
            "target-a 1750000000 1700000500 1750000000 4 3 1 2 3\n",
            Printed(PrintCopyShort, copy_));
  EXPECT_EQ(" Copy:\n"
            "   Master Server       : master1\n"
            "   Backup ID           : client1_1700000000\n"
            "   Copy Number         : 2\n"
            "   Copy Type           : 3 (REPLICATE_TO_REMOTE_MASTER) \n"
            "   Expire Time         : 1800000000 (2027/01/15 08:00:00)\n"
            "   Expire LC Time      : 1750000000 (2025/06/15 15:06:40)\n"
            "   Try To Keep Time    : 3600 (1:00:00)\n"
            "   Residence           : Remote Master\n"
            "   Copy State          : 2 (IN_PROCESS) \n"
            "   Job ID              : 4711\n"
            "   Retention Type      : 1 (CAPACITY_MANAGED) \n"
            "   MPX State           : 1 (true)\n"
            "   RetryCount          : 4\n"
            "   Last Retry Time     : 1700000500 (2023/11/14 22:21:40)\n"
            "   Source              : 1\n"
            "   Target ID           : target-a\n"
            "   Replica:            : 1\n"
            "   DataFormat          : 2 (DF_SNAPSHOT) \n"
            "   SLP Index           : 3\n"
            "\n",
            Printed(PrintCopyUser, copy_));
}

TEST_F(RecordPrintersTest, CopyUserFallbacksAndLocalResidence) {
  strcpy(copy_.Residence, "stu-disk");
  copy_.DestinationID[0] = '\0';
  copy_.CopyType = 10;
  copy_.CopyState = 16;
  copy_.RetentionType = -1;
  copy_.MPXState = 0;
  copy_.DataFormat = 4;
  std::string user = Printed(PrintCopyUser, copy_);
  for (const char* line : {"   Copy Type           : 10 (INVALID_COPY_TYPE)\n",
                           "   Residence           : stu-disk\n",
                           "   Copy State          : 16 (INVALID_IMAGE_COPY_STATE)\n",
                           "   Retention Type      : -1 (INVALID_RETENTION_TYPE)\n",
                           "   MPX State           : 0 (false)\n",
                           "   Destination ID      : (none specified)\n",
                           "   DataFormat          : 4 (INVALID_DATA_FORMAT)\n"}) {
    EXPECT_NE(std::string::npos, user.find(line)) << line;
  }
  EXPECT_EQ(std::string::npos, user.find("Target ID"));
}

TEST_F(RecordPrintersTest, FragmentLines) {
  EXPECT_EQ("V7.6.0 F master1 client1_1700000000 1 3 0 @aaaab media1 dd1 0 6 1 5368709120 1 "
            "client1_1700000000_C1_F3 *NULL* pool1\n",
            Printed(PrintFragmentShort, fragment_));
  EXPECT_EQ("   Fragment:\n"
            "     Master Server     : master1\n"
            "     Backup ID         : client1_1700000000\n"
            "     Copy Number       : 1\n"
            "     Fragment Number   : 3\n"
            "     Resume Count      : 0\n"
            "     Media ID          : @aaaab\n"
            "     Media Server      : media1\n"
            "     Storage Server    : dd1\n"
            "     Media Type        : 0 (DISK) \n"
            "     Media Sub-Type    : 6 (STSDYNAMIC) \n"
            "     Fragment State    : 1 (ACTIVE) \n"
            "     Fragment Size     : 5368709120\n"
            "     Delete Header     : 1\n"
            "     Fragment ID       : client1_1700000000_C1_F3\n"
            "     Snap MountHost    : (none specified)\n"
            "     Media Description : pool1\n"
            "\n",
            Printed(PrintFragmentUser, fragment_));
}

TEST_F(RecordPrintersTest, FragmentUserFallbacks) {
  struct Case {
    int mediaType;
    short subType;
    short state;
    const char* lines[3];
  } cases[] = {
      {6, 0, 5,
       {"     Media Type        : 6 (DISKSTAGE) \n", "     Media Sub-Type    : 0 (DEFAULT) \n",
        "     Fragment State    : 5 (UNDEFINED) \n"}},
      {7, 7, 0,
       {"     Media Type        : 7 (UNKNOWN_STU_TYPE)\n",
        "     Media Sub-Type    : 7 (UNKNOWN_STU_SUBTYPE)\n",
        "     Fragment State    : 0 (INVALID_FRAG_STATE)\n"}},
      {-1, -1, 6,
       {"     Media Type        : -1 (UNKNOWN_STU_TYPE)\n",
        "     Media Sub-Type    : -1 (UNKNOWN_STU_SUBTYPE)\n",
        "     Fragment State    : 6 (INVALID_FRAG_STATE)\n"}},
  };
  for (const Case& c : cases) {
    fragment_.MediaType = c.mediaType;
    fragment_.MediaSubType = c.subType;
    fragment_.FragmentState = c.state;
    std::string user = Printed(PrintFragmentUser, fragment_);
    for (const char* line : c.lines) EXPECT_NE(std::string::npos, user.find(line)) << line;
  }
}

TEST_F(RecordPrintersTest, SnapshotLines) {
  EXPECT_EQ("V7.6.0 S client1_1700000000 2 array1  NetApp  *NULL*  @snap7  snap_001  \n",
            Printed(PrintSnapshotShort, snapshot_));
  EXPECT_EQ("   Snapshot : \n"
            "     Backup ID           : client1_1700000000\n"
            "     Copy Number         : 2\n"
            "     Storage Server Name : array1\n"
            "     Storage Server Type : NetApp\n"
            "     DiskVolumeName      : (none specified)\n"
            "     DiskMediaID         : @snap7\n"
            "     Snapshot Name       : snap_001\n"
            "\n",
            Printed(PrintSnapshotUser, snapshot_));
}

TEST_F(RecordPrintersTest, LongestTextsComeOutWhole) {
  memset(fragment_.BackupID, 'b', EMM_BACKUPID_SIZE - 1);
  memset(fragment_.FragmentID, 'f', EMM_LONGTEXT_SIZE - 1);
  memset(fragment_.MediaDescription, 'd', EMM_LONGTEXT_SIZE - 1);
  memset(fragment_.MediaID, 'm', EMM_NAME_SIZE - 1);
  memset(fragment_.MediaServer, 's', EMM_HOSTNAME_SIZE - 1);
  memset(fragment_.StorageServer, 't', EMM_HOSTNAME_SIZE - 1);
  memset(fragment_.SnapMountHost, 'h', EMM_HOSTNAME_SIZE - 1);
  std::string user = Printed(PrintFragmentUser, fragment_);
  EXPECT_GT(user.size(), 4096u);
  EXPECT_NE(std::string::npos,
            user.find("     Media Description : " + std::string(1024, 'd') + "\n\n"));
  EXPECT_EQ(0u, user.find("   Fragment:\n     Master Server     : master1\n"));
}

}  // namespace
