// SPDX-License-Identifier: Apache-2.0
/** What the native JSON editor calls. */
package com.tesk.java_client.core.documents.output.export;
