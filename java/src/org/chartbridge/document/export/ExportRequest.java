// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.nio.charset.Charset;
import java.util.Locale;
import org.chartbridge.document.model.Paper;

/**
 * What to export, and how.
 *
 * @param document the name of a document that is held, or null
 * @param input the path of a document's file, or null
 * @param to what to export to
 * @param output the path of the file to write; null for a check
 * @param base the folder of the files that the input refers to; null for its own
 * @param language the language to take instead of the document's, or null
 * @param style the style of all figures instead of their own, or null
 * @param paper the paper to take instead of the document's, or null
 * @param charset the encoding of CSV and text; null for the host's
 * @param table the number of the one table to write as CSV; 0 for all
 * @param release whether the document is no longer needed afterwards
 */
public record ExportRequest(String document, String input, Target to, String output, String base,
    Locale language, String style, Paper paper, Charset charset, int table, boolean release) {}
