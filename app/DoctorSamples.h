// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORSAMPLES_H_
#define APP_DOCTORSAMPLES_H_

namespace chartbridge {

/// A small chart in the form that the command's own Java classes take.
extern const char* const kDoctorChart;
/// Its data.
extern const char* const kDoctorData;
/// A small tree model.
extern const char* const kDoctorModel;

}  // namespace chartbridge

#endif  // APP_DOCTORSAMPLES_H_
