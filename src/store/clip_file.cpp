#include "store/clip_file.h"

#include <array>

#include "store/json_reader.h"
#include "store/json_writer.h"

namespace brimlo {
namespace {

constexpr std::array<std::string_view, 4> kRequired = {"id", "text", "savedAt", "source"};

ClipPtr decodeClip(ondemand::object object, std::size_t index, StringReader& strings) {
  auto clip = std::make_shared<Clip>();
  RequiredKeys required(kRequired);
  for (auto field : object) {
    const std::string_view key = strings.view(field.key());
    required.note(key);
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
  required.check("clip", index);
  return clip;
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

Decoded<IdSet> decodeIds(const FileContents& file) {
  IdSet ids;
  std::string fault =
      decodeArray(file, [&](ondemand::value element, std::size_t, StringReader& strings) {
        ids.insert(strings.copy(element));
      });
  if (!fault.empty()) return {std::nullopt, std::move(fault)};
  return {std::move(ids), {}};
}

void encodeIds(const IdSet& ids, ByteSink& sink) {
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
