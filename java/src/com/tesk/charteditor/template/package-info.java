// SPDX-License-Identifier: Apache-2.0
/** The way from Java into the native chart library. */
package com.tesk.charteditor.template;
