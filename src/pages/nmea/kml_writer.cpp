#include "pages/nmea/kml_writer.h"

#include <cstdio>

#include "pages/nmea/kml_colours.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

// Google's public palette of KML icons serves the start and end markers'
// /mapfiles/kml/pal2/icon15.png.
constexpr const char* kIconHost = "https://maps.google.com";
// GPS Visualizer, a public GPS mapping site, hosts the balloon's "more
// details" link; the satview path and query behind it are kept as the
// receiver tool has always written them.
constexpr const char* kSatViewHost = "https://www.gpsvisualizer.com";

// The mix log is read line by line through a buffer of this size.
constexpr std::size_t kKmlLineSize = 1024;

constexpr std::string_view kTypeSuffixes[] = {
    "_GGARange", "_GGA",    "_RtkposRange",  "_MatchRange", "_PsrRange",    "_BestRange",
    "_Rtkpos",   "_Psrpos", "_Bestpos",      "_Matchedpos", "_Drpva",       "_PosT",
    "_Inspva",   "_Ppppos", "_BestnavRange", "_Bestnav",    "_SppnavRange", "_Sppnav",
};
constexpr std::string_view kInsTypeSuffixes[] = {"_Drpva", "_Inspva", "_Inspvax", "_Inspvas"};
constexpr std::string_view kPostSuffix = "_PosT";

// Status codes of the mix log that the icons and heights tell apart.
constexpr int kFixedStatus = 4;
constexpr int kFloatStatus = 5;
constexpr int kInsStatus = 6;
// Colour index whose INS epochs are drawn blue rather than red.
constexpr int kRedIndex = 4;

enum class RowKind { kPosition, kIns, kTrajectory };

// One row of a mix log, whichever of the three forms it has.
struct KmlRow {
  int week = 0;
  double second = 0.0;
  double utc = 0.0;  // hhmmss.sss
  double drAge = 0.0;
  double solAge = 0.0;
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  int satellites = 0;
  double hdop = 0.0;
  int status = 0;
  double age = 0.0;
  double velocity[3] = {};
  double attitude[3] = {};  // roll, pitch, azimuth or heading
  int observations = 0;
  int counts[14] = {};
  // Trajectory rows.
  int sequence = 0;
  double northing = 0.0;
  double easting = 0.0;
  double speed = 0.0;
  int quality = 0;
};

bool ParseRow(RowKind kind, const char* line, KmlRow& r) {
  int* c = r.counts;
  switch (kind) {
    case RowKind::kPosition:
      return std::sscanf(line,
                         "%d,%lf,%lf,%lf,%lf,%lf,%d,%lf,%d,%lf,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,"
                         "%d,%d,%d",
                         &r.week, &r.second, &r.utc, &r.latitude, &r.longitude, &r.height,
                         &r.satellites, &r.hdop, &r.status, &r.age, &r.observations, &c[0], &c[1],
                         &c[2], &c[3], &c[4], &c[5], &c[6], &c[7], &c[8], &c[9], &c[10], &c[11],
                         &c[12], &c[13]) == 25;
    case RowKind::kIns:
      return std::sscanf(line,
                         "%d,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%d,%lf,%d,%lf,%lf,%lf,%lf,%lf,%lf,%lf,"
                         "%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d",
                         &r.week, &r.second, &r.utc, &r.drAge, &r.solAge, &r.latitude, &r.longitude,
                         &r.height, &r.satellites, &r.hdop, &r.status, &r.age, &r.velocity[0],
                         &r.velocity[1], &r.velocity[2], &r.attitude[0], &r.attitude[1],
                         &r.attitude[2], &r.observations, &c[0], &c[1], &c[2], &c[3], &c[4], &c[5],
                         &c[6], &c[7], &c[8], &c[9], &c[10], &c[11], &c[12], &c[13]) == 33;
    case RowKind::kTrajectory:
      return std::sscanf(line, "%d %lf %lf %lf %lf %lf %lf %lf %lf %lf %lf %d", &r.sequence,
                         &r.second, &r.northing, &r.easting, &r.height, &r.latitude, &r.longitude,
                         &r.speed, &r.attitude[0], &r.attitude[1], &r.attitude[2],
                         &r.quality) == 12;
  }
  return false;
}

// The next row that parses; false at the end of the file.
bool NextRow(InFile& in, RowKind kind, KmlRow& row) {
  char line[kKmlLineSize];
  while (in.ReadLine(line, sizeof line)) {
    KmlRow read;
    if (ParseRow(kind, line, read)) {
      row = read;
      return true;
    }
  }
  return false;
}

struct Point {
  double longitude = 0.0;
  double latitude = 0.0;
  double height = 0.0;
};

Point PointOf(const KmlRow& row) {
  return {row.longitude, row.latitude, row.height};
}

// hhmmss.sss split by decimal arithmetic.
struct UtcParts {
  int hours = 0;
  int minutes = 0;
  double seconds = 0.0;
};

UtcParts SplitUtc(double t) {
  UtcParts parts;
  parts.hours = SaturatingInt(t / 10000);
  parts.minutes = SaturatingInt((t - 10000.0 * parts.hours) / 100);
  parts.seconds = t - 10000.0 * parts.hours - 100.0 * parts.minutes;
  return parts;
}

// Fixed, float and other epochs stand on three levels in a 3D view.
double DisplayHeight(int status) {
  if (status == kFixedStatus) return 0.0;
  if (status == kFloatStatus) return 7.5;
  return 15.0;
}

// The trajectory's quality number, 1 best to 6 worst as post-processing
// packages grade a solution, as an icon colour and a status code:
//   1 fixed integer     green   4
//   2 converged float   yellow  5
//   3 converging float  orange  5
//   4 differential code blue    2
//   5 single point      red     1
//   6 or anything else  pink    0
struct QualityLook {
  int colourIndex;
  int status;
};

QualityLook LookOfQuality(int quality) {
  switch (quality) {
    case 1:
      return {0, kFixedStatus};
    case 2:
      return {2, kFloatStatus};
    case 3:
      return {1, kFloatStatus};
    case 4:
      return {3, 2};
    case 5:
      return {4, 1};
    default:
      return {6, 0};
  }
}

// What one writer holds constant over the file.
struct TrackStyle {
  RowKind kind = RowKind::kPosition;
  int colourIndex = 0;
  int lineWidth = 0;
};

void WriteHead(OutFile& out, std::string_view title) {
  out.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  out.Write(
      "<kml xmlns=\"http://www.opengis.net/kml/2.2\" "
      "xmlns:gx=\"http://www.google.com/kml/ext/2.2\" "
      "xmlns:kml=\"http://www.opengis.net/kml/2.2\" xmlns:atom=\"http://www.w3.org/2005/Atom\">\n");
  out.Write("<Folder><name>");
  // A log's name may hold XML's own marks; escaped, the file stays well formed.
  for (char c : title) {
    switch (c) {
      case '&':
        out.Write("&amp;");
        break;
      case '<':
        out.Write("&lt;");
        break;
      case '>':
        out.Write("&gt;");
        break;
      default:
        out.Write(std::string_view(&c, 1));
    }
  }
  out.Write("</name><open>0</open>\n");
}

// The start or end marker up to its coordinates.
void OpenMarker(OutFile& out, const char* name) {
  out.Printf(
      "<Document><name>%s</name><Placemark><name>%s</name><Style><IconStyle><scale>1.2</scale>"
      "<Icon><href>%s/mapfiles/kml/pal2/icon15.png</href></Icon></IconStyle></Style><Point>"
      "<extrude>1</extrude><altitudeMode>relativeToGround</altitudeMode><coordinates>",
      name, name, kIconHost);
}

void WritePoint(OutFile& out, const Point& p) {
  out.Printf("%.6f,%.6f,%.2f", p.longitude, p.latitude, p.height);
}

// The balloon of a position or INS epoch.
void WriteSolutionBalloon(OutFile& out, const KmlRow& row, int tag, bool ins) {
  const UtcParts utc = SplitUtc(row.utc);
  out.Printf(
      "<description><![CDATA[<TABLE><TR><TD width=1000>UTC:%02d:%02d:%.1f, Tag:%d, PM:0,<BR>"
      "Lat:%.3fN, Lon:%.3fE,<BR>Alt:%.2fM <font color=\"red\">SatN:%d</font>, "
      "S:0.0,C:0.0,RD:0.0,HDOP:%.1f",
      utc.hours, utc.minutes, utc.seconds, tag, row.latitude, row.longitude, row.height,
      row.satellites, row.hdop);
  if (ins) {
    out.Printf(
        "<BR>vel:%-5.6f,%-5.6f,%-5.6f<BR>altitude:%-5.6f,%-5.6f,%-5.6f<BR>Dr_age:%-5.6f,"
        "Sol_age:%-5.6f",
        row.velocity[0], row.velocity[1], row.velocity[2], row.attitude[0], row.attitude[1],
        row.attitude[2], row.drAge, row.solAge);
  }
  const int* c = row.counts;
  out.Write(
      "</TD><table border=\"1\" padding=\"1\"><tr><td>System</td><td>1PSR</td><td>1ADR</td>"
      "<td>2PSR</td><td>2ADR</td><td>3PSR</td><td>3ADR</td></tr>");
  out.Printf("<tr><td>GPS</td><td>%d</td><td>%d</td><td>%d</td><td>%d</td><td></td><td></td></tr>",
             c[0], c[1], c[2], c[3]);
  out.Printf(
      "<tr><td>BD2</td><td>%d</td><td>%d</td><td>%d</td><td>%d</td><td>%d</td><td>%d</td></tr>",
      c[4], c[5], c[6], c[7], c[8], c[9]);
  out.Printf("<tr><td>GLO</td><td>%d</td><td>%d</td><td>%d</td><td>%d</td><td></td><td></td></tr>",
             c[10], c[11], c[12], c[13]);
  out.Write(
      "<tr><td>ElseInfo</td><td>Week</td><td>Second</td><td>UTCS</td><td>Age</td><td>Status</td>"
      "<td>ulObs</td></tr>");
  out.Printf(
      "<tr><td>Value</td><td>%d</td><td>%.1f</td><td>%.1f</td><td>%.1f</td><td>%d</td><td>%d</td>"
      "</tr></table>",
      row.week, row.second, row.utc, row.age, row.status, row.observations);
  out.Printf(
      "<TD><A HREF='%s/KV-Freeware/satview.php4?AppVer=1.5.0.3&Ver=2&Sat=&X=%.5f&Y=%.5f&time="
      "%02d:%02d:%.1f&velocity=0.0&HDOP=%.3f&Height=%.3f&GeoideHeight=0'><IMG SRC='%s/KV-Freeware/"
      "satviewimage.php4?Sat=' width=100 height=100><BR>more details</A></TD></TR></TABLE>]]>",
      kSatViewHost, row.longitude, row.latitude, utc.hours, utc.minutes, utc.seconds, row.hdop,
      row.height, kSatViewHost);
}

// The plain table of a trajectory epoch.
void WriteTrajectoryTable(OutFile& out, const KmlRow& row) {
  out.Write(
      "<description><table border=\"1\" padding=\"1\"><tr><td>Quality</td><td>Second</td>"
      "<td>Lon</td><td>Lat</td><td>Heg</td><td>Speed</td><td>Roll</td><td>Pitch</td>"
      "<td>Heading</td></tr>");
  constexpr const char* kCell = "</td><td>";
  out.Printf("%s%d%s%.3f%s%.11f%s%.11f%s%.3f%s%.4f%s%.5f%s%.5f%s%.5f%s", "<tr><td>", row.quality,
             kCell, row.second, kCell, row.longitude, kCell, row.latitude, kCell, row.height, kCell,
             row.speed, kCell, row.attitude[0], kCell, row.attitude[1], kCell, row.attitude[2],
             "</td></tr>");
  out.Write("</table>");
}

// Colour index and status code of an epoch's icon and line.
QualityLook LookOf(const TrackStyle& style, const KmlRow& row) {
  if (style.kind == RowKind::kTrajectory) return LookOfQuality(row.quality);
  return {style.colourIndex, row.status};
}

void WriteEpoch(OutFile& out, const TrackStyle& style, const KmlRow& row, int tag) {
  out.Printf("<Document><name>Tag%d</name><Placemark>", tag);
  // Only every hundredth epoch is labelled, which keeps a long run legible.
  if (tag % 100 == 0) out.Printf("<name>Tag%d</name>", tag);
  if (style.kind == RowKind::kTrajectory) {
    WriteTrajectoryTable(out, row);
  } else {
    WriteSolutionBalloon(out, row, tag, style.kind == RowKind::kIns);
  }
  const QualityLook look = LookOf(style, row);
  std::string_view word = KmlIconWord(look.colourIndex);
  // INS epochs stand out from the chosen colour: red, or blue when red was
  // chosen. The first epoch keeps the chosen colour.
  if (style.kind != RowKind::kTrajectory && tag > 0 && row.status == kInsStatus) {
    word = style.colourIndex == kRedIndex ? "blue" : "red";
  }
  // The icon folder beside the log, by the native separator so that a map
  // viewer on this machine finds it.
  out.Write("</description><Style><IconStyle><scale>0.6</scale><Icon><href>KestrixKML/");
  out.Write(KmlIconName(word, look.status));
  out.Printf(
      ".png</href></Icon></IconStyle></Style><Point><extrude>1</extrude><altitudeMode>"
      "relativeToGround</altitudeMode><coordinates>%.6f,%.6f,%.6f</coordinates></Point>"
      "</Placemark>",
      row.longitude, row.latitude, DisplayHeight(look.status));
}

void WriteSegment(OutFile& out, int lineWidth, std::string_view colour, const Point& from,
                  const Point& to) {
  out.Printf("<Placemark><Style><LineStyle><width>%d</width><color>", lineWidth);
  out.Write(colour);
  out.Printf(
      "</color></LineStyle></Style><LineString><tessellate>1</tessellate><coordinates>"
      "%.6f,%.6f,%.2f %.6f,%.6f,%.2f</coordinates></LineString></Placemark>",
      from.longitude, from.latitude, from.height, to.longitude, to.latitude, to.height);
}

// The skeleton of all three writers. Each epoch is one Document; the file
// is flushed after each, so an interrupted run leaves a readable prefix.
int WriteTrackFile(const std::string& mixLogPath, std::string_view suffix,
                   const TrackStyle& style) {
  InFile in;
  if (!in.Open(mixLogPath, FileMode::kText)) return kKmlOpenFailed;
  OutFile out;
  if (!out.Open(KmlPath(mixLogPath, suffix), FileMode::kText)) return kKmlOpenFailed;
  WriteHead(out, SplitPath(mixLogPath).name);
  OpenMarker(out, "Start");

  char header[kKmlLineSize];
  KmlRow row;
  const bool any = in.ReadLine(header, sizeof header) && NextRow(in, style.kind, row);
  Point previous;
  if (any) previous = PointOf(row);
  WritePoint(out, previous);
  out.Write("</coordinates></Point></Placemark></Document>\n");
  if (any) {
    WriteEpoch(out, style, row, 0);
    out.Write("</Document>\n");
    out.Flush();
    for (int tag = 1; NextRow(in, style.kind, row); ++tag) {
      WriteEpoch(out, style, row, tag);
      const int colourIndex = LookOf(style, row).colourIndex;
      WriteSegment(out, style.lineWidth, KmlLineColour(colourIndex), previous, PointOf(row));
      out.Write("</Document>\n");
      previous = PointOf(row);
      out.Flush();
    }
  }

  OpenMarker(out, "End");
  WritePoint(out, previous);
  out.Write("</coordinates></Point></Placemark></Document></Folder></kml>");
  return 1;
}

template <std::size_t N>
std::string_view SuffixAt(const std::string_view (&table)[N], int index) {
  return index >= 0 && index < static_cast<int>(N) ? table[index] : std::string_view();
}

}  // namespace

std::string_view KmlIconWord(int colourIndex) {
  if (colourIndex < 0 || colourIndex >= kKmlColourCount) colourIndex = 0;
  return kKmlColours[colourIndex].iconWord;
}

std::string_view KmlLineColour(int colourIndex) {
  if (colourIndex < 0 || colourIndex >= kKmlColourCount) colourIndex = 0;
  return kKmlColours[colourIndex].lineColour;
}

std::string_view KmlTypeSuffix(int kmlType) {
  return SuffixAt(kTypeSuffixes, kmlType);
}

std::string_view InsKmlTypeSuffix(int insType) {
  return SuffixAt(kInsTypeSuffixes, insType);
}

std::string KmlPath(const std::string& mixLogPath, std::string_view suffix) {
  const PathParts parts = SplitPath(mixLogPath);
  return parts.drive + parts.folder + parts.name + std::string(suffix) + ".kml";
}

int WriteKml(const std::string& mixLogPath, int colourIndex, int kmlType, int lineWidth) {
  return WriteTrackFile(mixLogPath, KmlTypeSuffix(kmlType),
                        {RowKind::kPosition, colourIndex, lineWidth});
}

int WriteInsKml(const std::string& mixLogPath, int colourIndex, int insType, int lineWidth) {
  return WriteTrackFile(mixLogPath, InsKmlTypeSuffix(insType),
                        {RowKind::kIns, colourIndex, lineWidth});
}

int WritePostKml(const std::string& mixLogPath, int lineWidth) {
  return WriteTrackFile(mixLogPath, kPostSuffix, {RowKind::kTrajectory, 0, lineWidth});
}

}  // namespace tarnlog
