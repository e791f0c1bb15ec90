#include "store/clip_file.h"

#include "store/json_reader.h"
#include "store/json_writer.h"

namespace brimlo {
namespace {

constexpr JsonForm<Clip, 5> kForm = {"clip",
                                     {{{"id", &Clip::id},
                                       {"text", &Clip::text},
                                       {"savedAt", &Clip::savedAt},
                                       {"source", &Clip::source},
                                       {"tags", &Clip::tags}}}};

}  // namespace

Decoded<std::vector<ClipPtr>> decodeClips(const FileContents& file) {
  return decodeArray<std::vector<ClipPtr>>(
      file, [](ondemand::value element, std::size_t index, ValueReader& reader, auto& clips) {
        auto clip = std::make_shared<Clip>();
        Fault fault = readRecord(element, kForm, index, reader, *clip);
        clips.push_back(std::move(clip));
        return fault;
      });
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
    json.record(*clips[i], kForm);
  }
  json.raw("]");
}

Decoded<IdSet> decodeIds(const FileContents& file) {
  return decodeArray<IdSet>(
      file, [](ondemand::value element, std::size_t, ValueReader& reader, IdSet& ids) {
        std::string id;
        const auto error = reader.read(element, id);
        ids.insert(std::move(id));
        return faultOf(error);
      });
}

void encodeIds(const IdSet& ids, ByteSink& sink) {
  JsonWriter json(sink);
  json.array(ids, [&](const std::string& id) { json.value(id); });
}

}  // namespace brimlo
