#pragma once

#include <optional>
#include <string_view>

#include "platform/cloud_database.h"
#include "store/clip.h"
#include "store/template.h"

/// Clips and templates as records. A record's name is the id of what it carries; its dates are in
/// seconds, ours in milliseconds. Any thread.
///
///   Clip:     "text" string, "savedAt" date, "source" string, "tags" string list
///   Template: "title" string, "body" string, "createdAt" date
namespace brimlo {

constexpr std::string_view kClipRecord = "Clip";
constexpr std::string_view kTemplateRecord = "Template";

/// The clip that `record` carries; none where it has no "text". Any other field that is missing
/// or holds something else counts as not set: time 0, source "manual", no tags.
std::optional<Clip> clipFromRecord(const CloudRecord& record);

/// A fresh record with everything that the clip has; no "tags" where it has none or an empty list.
CloudRecord recordFromClip(const Clip& clip);

/// The template that `record` carries; none where it has no "title". A missing body counts as
/// empty, a missing time as 0.
std::optional<Template> templateFromRecord(const CloudRecord& record);

/// For a new database only: a sync run never writes templates.
CloudRecord recordFromTemplate(const Template& given);

}  // namespace brimlo
