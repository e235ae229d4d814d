// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.awt.Dimension;
import java.awt.geom.Dimension2D;
import org.apache.batik.bridge.EmbededExternalResourceSecurity;
import org.apache.batik.bridge.ExternalResourceSecurity;
import org.apache.batik.bridge.NoLoadScriptSecurity;
import org.apache.batik.bridge.ScriptSecurity;
import org.apache.batik.bridge.UserAgentAdapter;
import org.apache.batik.util.ParsedURL;

/**
 * What the SVG library may do: draw. It loads nothing, whatever {@link SvgReferences} may have
 * overlooked, runs nothing and prints nothing.
 */
final class SvgRules extends UserAgentAdapter {
  private final Dimension viewport;

  /** @param viewport the size of an image that does not say its own, in pixels */
  SvgRules(Dimension viewport) {
    this.viewport = viewport;
  }

  @Override
  public Dimension2D getViewportSize() {
    return (Dimension) viewport.clone();
  }

  @Override
  public ExternalResourceSecurity getExternalResourceSecurity(
      ParsedURL resource, ParsedURL document) {
    return new EmbededExternalResourceSecurity(resource);
  }

  @Override
  public void checkLoadExternalResource(ParsedURL resource, ParsedURL document) {
    getExternalResourceSecurity(resource, document).checkLoadExternalResource();
  }

  @Override
  public ScriptSecurity getScriptSecurity(String type, ParsedURL script, ParsedURL document) {
    return new NoLoadScriptSecurity(type);
  }

  @Override
  public void checkLoadScript(String type, ParsedURL script, ParsedURL document) {
    getScriptSecurity(type, script, document).checkLoadScript();
  }

  @Override
  public void displayError(Exception error) {
    // Errors that matter are thrown by the builder as well.
  }

  @Override
  public void displayMessage(String message) {
    // The host's standard error is its own.
  }
}
