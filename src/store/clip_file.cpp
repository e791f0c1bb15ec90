#include "store/clip_file.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <new>

#include "store/json_writer.h"

namespace brimlo {
namespace {

namespace ondemand = simdjson::ondemand;

constexpr std::array<std::string_view, 4> kRequired = {"id", "text", "savedAt", "source"};

/// A document of the right syntax that does not have the form it should.
struct Malformed {
  std::string fault;
};

/// Takes strings out of a document. Each is unescaped to the same place before it is copied: the
/// parser's own buffer would keep them all, and meeting that much fresh memory costs more than the
/// work itself.
class StringReader {
 public:
  StringReader(const ondemand::parser& parser, std::size_t documentSize)
      : parser_(parser), place_(new std::uint8_t[documentSize + simdjson::SIMDJSON_PADDING]) {}

  /// The string; valid until the next call.
  std::string_view view(ondemand::raw_json_string string) {
    std::uint8_t* end = place_.get();
    return parser_.unescape(string, end);
  }
  std::string copy(ondemand::value value) { return std::string(view(value.get_raw_json_string())); }

 private:
  const ondemand::parser& parser_;
  std::unique_ptr<std::uint8_t[]> place_;
};

ClipPtr decodeClip(ondemand::object object, std::size_t index, StringReader& strings) {
  auto clip = std::make_shared<Clip>();
  std::array<bool, kRequired.size()> seen{};
  for (auto field : object) {
    const std::string_view key = strings.view(field.key());
    const auto required = std::find(kRequired.begin(), kRequired.end(), key);
    if (required != kRequired.end()) seen[required - kRequired.begin()] = true;
    if (key == "id") {
      clip->id = strings.copy(field.value());
    } else if (key == "text") {
      clip->text = strings.copy(field.value());
    } else if (key == "savedAt") {
      clip->savedAt = field.value().get_double();
    } else if (key == "source") {
      clip->source = strings.copy(field.value());
    } else if (key == "tags") {
      ondemand::value tags = field.value();
      if (tags.is_null()) continue;
      clip->tags.emplace();
      for (auto tag : tags.get_array()) clip->tags->push_back(strings.copy(tag.value()));
    }
  }
  const auto missing = std::find(seen.begin(), seen.end(), false);
  if (missing != seen.end()) {
    throw Malformed{"clip " + std::to_string(index) + " has no \"" +
                    std::string(kRequired[missing - seen.begin()]) + "\""};
  }
  return clip;
}

/// Parses `file` as one JSON array and hands each element to `take`; says what is wrong, or "".
template <typename Take>
std::string decodeArray(const FileContents& file, Take take) {
  try {
    ondemand::parser parser;
    ondemand::document document = parser.iterate(
        simdjson::padded_string_view(file.view(), file.size + FileContents::kPadding));
    StringReader strings(parser, file.size);
    std::size_t index = 0;
    for (auto element : document.get_array()) take(element.value(), index++, strings);
    const bool atEnd = document.current_location().error() == simdjson::OUT_OF_BOUNDS;
    return atEnd ? "" : "something follows the array";
  } catch (const simdjson::simdjson_error& error) {
    return error.what();
  } catch (const Malformed& malformed) {
    return malformed.fault;
  } catch (const std::bad_alloc&) {
    return "too large for the memory";
  }
}

void encodeClip(const Clip& clip, JsonWriter& json) {
  json.raw("{\"id\":");
  json.string(clip.id);
  json.raw(",\"text\":");
  json.string(clip.text);
  json.raw(",\"savedAt\":");
  json.number(clip.savedAt);
  json.raw(",\"source\":");
  json.string(clip.source);
  if (clip.tags) {
    json.raw(",\"tags\":[");
    for (std::size_t i = 0; i < clip.tags->size(); ++i) {
      if (i > 0) json.raw(",");
      json.string((*clip.tags)[i]);
    }
    json.raw("]");
  }
  json.raw("}");
}

}  // namespace

Decoded<std::vector<ClipPtr>> decodeClips(const FileContents& file) {
  std::vector<ClipPtr> clips;
  std::string fault =
      decodeArray(file, [&](ondemand::value element, std::size_t index, StringReader& strings) {
        clips.push_back(decodeClip(element.get_object(), index, strings));
      });
  if (!fault.empty()) return {std::nullopt, std::move(fault)};
  return {std::move(clips), {}};
}

void encodeClips(const ClipList& clips, std::size_t saved, ByteSink& sink) {
  JsonWriter json(sink);
  json.raw("[");
  for (std::size_t i = 0; i < clips.size(); ++i) {
    if (i > 0) json.raw(",");
    if (i == saved) {
      json.flush();
      if (sink.appendFromReplaced(1)) return;  // all but the bracket
    }
    encodeClip(*clips[i], json);
  }
  json.raw("]");
}

Decoded<std::unordered_set<std::string>> decodeIds(const FileContents& file) {
  std::unordered_set<std::string> ids;
  std::string fault =
      decodeArray(file, [&](ondemand::value element, std::size_t, StringReader& strings) {
        ids.insert(strings.copy(element));
      });
  if (!fault.empty()) return {std::nullopt, std::move(fault)};
  return {std::move(ids), {}};
}

void encodeIds(const std::unordered_set<std::string>& ids, ByteSink& sink) {
  JsonWriter json(sink);
  json.raw("[");
  bool first = true;
  for (const std::string& id : ids) {
    if (!first) json.raw(",");
    first = false;
    json.string(id);
  }
  json.raw("]");
}

}  // namespace brimlo
