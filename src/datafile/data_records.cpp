#include "datafile/data_records.h"

#include <algorithm>
#include <string>

#include "base/number_text.h"
#include "base/text_codec.h"
#include "settings/setting_choices.h"

namespace gc40 {
namespace {

constexpr std::size_t kTextLength = dataRecordLength - 1;

// A NUL ends a text: it keeps NUL bytes out of the file, where a reader would
// take them for damage.
std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

// As "%N.Df": formatFixed writes "nan", "-nan", "inf" and "-inf" as printf does.
std::string fixedField(double value, int decimals, std::size_t width) {
  return rightAligned(formatFixed(value, decimals), width);
}

// The tick as a signed 32-bit number, right-aligned in 10: ticks from 2^31 on
// are negative and may take 11 characters, as readers of the format expect.
std::string tickField(std::uint32_t tick) {
  return rightAligned(formatInteger(static_cast<std::int32_t>(tick)), 10);
}

std::string cutAndPadded(std::string_view text, std::size_t width) {
  std::string field(text.substr(0, width));
  field.resize(width, ' ');
  return field;
}

DataRecord finish(std::string_view text) {
  DataRecord record;
  record.fill(' ');
  std::copy_n(text.begin(), std::min(text.size(), kTextLength), record.begin());
  record[kTextLength] = '\n';
  return record;
}

// Header and line-block records end in two spaces whatever was pushed there.
DataRecord finishHeader(std::string_view text) {
  DataRecord record = finish(text);
  record[21] = record[22] = ' ';
  return record;
}

std::string digit(const Settings& settings, const IndexSetting& setting) {
  return formatInteger(effectiveIndex(settings, setting));
}

char platformMark(const Settings& settings) {
  if (settings.useStorageFolder == 0) return ' ';
  return settings.portraitScreen != 0 ? '3' : '2';
}

std::string timingField(const Settings& settings) {
  switch (effectiveSurveyMode(settings)) {
    case SurveyMode::kWheel:
      return fixedField(settings.stationIncrement, 3, 7);
    case SurveyMode::kManual:
      // The count the readings were really averaged over, so a damaged
      // setting cannot widen the field.
      return rightAligned(formatInteger(effectiveSamplesPerReading(settings.samplesPerReading)), 7);
    default:
      return fixedField(settings.readingInterval, 3, 7);
  }
}

// "hh:mm:ss" with the given separator.
std::string clockText(const LocalTime& now, std::string_view separator) {
  return formatZeroPadded(now.hour, 2) + std::string(separator) + formatZeroPadded(now.minute, 2) +
         std::string(separator) + formatZeroPadded(now.second, 2);
}

std::string gpsRecordText(char letter, std::string_view piece) {
  return letter + cutAndPadded(piece, kGpsPieceLength);
}

}  // namespace

DataRecord formatIdentificationRecord(const Settings& settings) {
  const bool shortVariant = effectiveIndex(settings, kInstrumentVariantSetting) == 1;
  const bool gps = effectiveIndex(settings, kGpsEnabledSetting) == 1;
  std::string text(shortVariant ? kShortVariantText : kStandardVariantText);
  text += kFirmwareText;
  text += gps ? kGpsText : kGroundText;
  text += digit(settings, kDistanceUnitsSetting) + digit(settings, kDipoleModeSetting) +
          digit(settings, kSurveyModeSetting) + digit(settings, kComponentSetting) + "   ";
  text += platformMark(settings);
  return finish(text);
}

DataRecord formatFileNameRecord(const Settings& settings, std::string_view baseName) {
  return finishHeader("H " + cutAndPadded(untilNul(baseName), kBaseNameFieldLength) +
                      timingField(settings));
}

std::array<DataRecord, 4> formatLineBlock(const Settings& settings, const LocalTime& now) {
  const std::string lineName = wideToWindows1252(settings.surveyLine);
  const char direction = kDirectionLetters[effectiveIndex(settings, kLineDirectionSetting)];
  return {
      finishHeader(recordLetter::kLine + cutAndPadded(untilNul(lineName), kLineNameLength)),
      finishHeader(recordLetter::kLineStart + fixedField(settings.startStation, 2, 11)),
      finishHeader(std::string{recordLetter::kLineAttributes, direction} + "      " +
                   fixedField(settings.stationIncrement, 3, 11)),
      finishHeader(recordLetter::kDateTime + formatZeroPadded(now.day, 2) +
                   formatZeroPadded(now.month, 2) + formatZeroPadded(now.year, 4) + " " +
                   clockText(now, ":")),
  };
}

DataRecord formatStationRecord(double station, const LocalTime& now) {
  return finish(recordLetter::kStation + fixedField(station, 2, 11) + " " + clockText(now, "") +
                formatZeroPadded(now.millisecond / 10, 2));
}

DataRecord formatReadingRecord(std::string_view instrumentRecord, std::uint32_t tick) {
  // A NUL inside the record (line noise) ends it; the rest is padded with
  // spaces, so the record keeps its width.
  const std::string_view received = untilNul(instrumentRecord.substr(0, kInstrumentRecordLength));
  return finish(cutAndPadded(received, kInstrumentRecordLength) + " " + tickField(tick));
}

DataRecord formatTimeMark(const LocalTime& now, std::uint32_t tick) {
  return finish(recordLetter::kTimeMark + clockText(now, ":") + "." +
                formatZeroPadded(now.millisecond, 3) + tickField(tick));
}

DataRecord formatTextRecord(std::u16string_view text, char typeLetter, std::uint32_t tick) {
  const std::string narrow = wideToWindows1252(text);
  return finish(typeLetter + cutAndPadded(untilNul(narrow), kTextFieldLength) + " " +
                tickField(tick));
}

std::vector<DataRecord> formatGpsRecords(std::string_view sentence, std::uint32_t tick,
                                         char firstLetter, char continuationLetter) {
  sentence = untilNul(sentence);
  const std::size_t wholePieces = sentence.size() / kGpsPieceLength;
  std::vector<DataRecord> records;
  records.reserve(wholePieces + 3);
  records.push_back(finish(gpsRecordText(firstLetter, sentence)));
  for (std::size_t k = 1; k < wholePieces; ++k) {
    records.push_back(finish(
        gpsRecordText(continuationLetter, sentence.substr(k * kGpsPieceLength, kGpsPieceLength))));
  }
  // The remainder; for a sentence shorter than one piece that is the whole
  // sentence again, and for an exact multiple an empty piece.
  records.push_back(
      finish(gpsRecordText(continuationLetter, sentence.substr(wholePieces * kGpsPieceLength))));
  records.push_back(finish(recordLetter::kGpsTime + std::string(12, ' ') + tickField(tick)));
  return records;
}

}  // namespace gc40
