#pragma once

#include "toolkit/CommandLine.h"
#include "toolkit/Session.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace sptool {

// Writes the info report one path at a time, as text or as one JSON document, through an OutputWriter.
class InfoWriter {
  public:
    explicit InfoWriter(Session& session);
    ~InfoWriter();
    InfoWriter(InfoWriter const&) = delete;
    InfoWriter& operator=(InfoWriter const&) = delete;

    // Reports the next path (numbered in the order given). Returns an exit code.
    int add(SimplePath const& path);
    // Ends the report and writes it out. Returns an exit code.
    int finish();

  private:
    Session& session_;
    OutputWriter out_;
    std::size_t count_ = 0;
    std::string scratch_; // one entry's text, reused
};

// Writes chains as lines of path data, or as the entries of one JSON document (--json), one at a time.
class DataWriter {
  public:
    DataWriter(Session& session, std::string const& outputPath);
    ~DataWriter();
    DataWriter(DataWriter const&) = delete;
    DataWriter& operator=(DataWriter const&) = delete;

    void add(CubicChain const& chain);
    int finish();

  private:
    Session& session_;
    OutputWriter out_;
    std::size_t count_ = 0;
};

// Whether a call can run over path data one subpath at a time: at most one command, and that one info or
// convert to path data (with or without --json). Everything else needs the whole drawing at once.
bool canStream(Invocation const& invocation);

// Runs such a call on path data: each subpath is read, turned into a library path, reported or written,
// and freed before the next is read, so memory stays flat however many subpaths there are.
int runPathStream(Session& session, std::string_view data, Step const* step);

} // namespace sptool
