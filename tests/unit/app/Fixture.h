// The demo workstation and an application on it that has not started yet.
#pragma once

#include <gtest/gtest.h>

#include "app/Application.h"
#include "fakes/FakeHost.h"

struct Workstation {
  Workstation() { fakes::FillDemoWorkstation(host); }
  fakes::FakeHost host;
  app::Application application{host.Contracts(), host.toolkit};
};

/// The workstation's contracts with these in the place of its own.
inline host::Host Contracts(fakes::FakeHost& host, host::QX32& qx32, host::DatabaseCompactor& compactor) {
  return {qx32,       host.qx32lib, host.qxNetDB,   host.components, host.catalogue, compactor,
          host.files, host.drives,  host.processes, host.shell,      host.clock,     host.messageLoop};
}

class AppTest : public testing::Test, public Workstation {};

/// Opens the catalogue as start-up does.
class CatalogueTest : public AppTest {
 public:
  CatalogueTest() { host.catalogue.Open("", host.catalogue.tableName); }
};
