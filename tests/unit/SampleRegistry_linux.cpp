#include "SampleRegistry.h"

#include "RecordingRegistry.h"

struct SampleRegistry::Implementation
{
    RecordingRegistry table;
};

SampleRegistry::SampleRegistry()
    : implementation (std::make_unique<Implementation>())
{
}

SampleRegistry::~SampleRegistry() = default;

void SampleRegistry::add (const UninstallEntry& entry) { implementation->table.entries.push_back (entry); }
