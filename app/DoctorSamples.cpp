// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorSamples.h"

namespace chartbridge {

const char* const kDoctorChart = R"(<?xml version="1.0" encoding="UTF-8"?>
<chart xmlns="urn:chartbridge:chart:2" width="240" height="180">
  <titles title="Doctor"/>
  <elements>
    <bar>
      <x column="name"/>
      <y column="value" aggregate="sum"/>
    </bar>
  </elements>
</chart>
)";

const char* const kDoctorData = "name,value\na,1\nb,2\n";

const char* const kDoctorModel = R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML xmlns="http://www.dmg.org/PMML-4_4" version="4.4">
  <Header/>
  <DataDictionary>
    <DataField name="x" optype="continuous" dataType="double"/>
    <DataField name="y" optype="categorical" dataType="string">
      <Value value="a"/>
      <Value value="b"/>
    </DataField>
  </DataDictionary>
  <TreeModel functionName="classification">
    <MiningSchema>
      <MiningField name="x"/>
      <MiningField name="y" usageType="target"/>
    </MiningSchema>
    <Node id="1" score="a">
      <True/>
      <Node id="2" score="a">
        <SimplePredicate field="x" operator="lessThan" value="1"/>
      </Node>
      <Node id="3" score="b">
        <SimplePredicate field="x" operator="greaterOrEqual" value="1"/>
      </Node>
    </Node>
  </TreeModel>
</PMML>
)";

}  // namespace chartbridge
