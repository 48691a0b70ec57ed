<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>qv::qt::GradientDialog</name>
    <message>
        <source>Solid</source>
        <translation>Einfarbig</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Rectangles about the centre</source>
        <translation>Rechtecke um die Mitte</translation>
    </message>
    <message>
        <source>Rhombi</source>
        <translation>Rauten</translation>
    </message>
    <message>
        <source>Fan from the centre</source>
        <translation>Fächer aus der Mitte</translation>
    </message>
    <message>
        <source>Rectangles about a corner</source>
        <translation>Rechtecke um eine Ecke</translation>
    </message>
    <message>
        <source>Fan from a corner</source>
        <translation>Fächer aus einer Ecke</translation>
    </message>
    <message>
        <source>Choose colours</source>
        <translation>Farben wählen</translation>
    </message>
    <message>
        <source>Color 1 by name</source>
        <translation>Farbe 1 nach Namen</translation>
    </message>
    <message>
        <source>Color 2 by name</source>
        <translation>Farbe 2 nach Namen</translation>
    </message>
    <message>
        <source>Shade of color 1</source>
        <translation>Helligkeit von Farbe 1</translation>
    </message>
    <message>
        <source>Shade of color 2</source>
        <translation>Helligkeit von Farbe 2</translation>
    </message>
    <message>
        <source>Shift of the middle</source>
        <translation>Verschiebung der Mitte</translation>
    </message>
    <message>
        <source>Gradient angle, degrees</source>
        <translation>Winkel des Verlaufs in Grad</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>A press or a drag sets the angle</source>
        <translation>Klicken oder Ziehen stellt den Winkel ein</translation>
    </message>
    <message>
        <source>Double</source>
        <translation>Doppelt</translation>
    </message>
    <message>
        <source>Double color gradients</source>
        <translation>Verläufe hin und zurück</translation>
    </message>
    <message>
        <source>Use color names</source>
        <translation>Farben nach Namen</translation>
    </message>
    <message>
        <source>deg</source>
        <translation>Grad</translation>
    </message>
    <message>
        <source>Color1</source>
        <translation>Farbe 1</translation>
    </message>
    <message>
        <source>Color2</source>
        <translation>Farbe 2</translation>
    </message>
    <message>
        <source>gShift</source>
        <translation>Verschiebung</translation>
    </message>
    <message>
        <source>Color 1</source>
        <translation>Farbe 1</translation>
    </message>
    <message>
        <source>Color 2</source>
        <translation>Farbe 2</translation>
    </message>
    <message>
        <source>Okay</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>qv::qt::PageMenu</name>
    <message>
        <source>Picture (*.png)</source>
        <translation>Bild (*.png)</translation>
    </message>
    <message>
        <source>Shapes and text (*.svg)</source>
        <translation>Formen und Text (*.svg)</translation>
    </message>
    <message>
        <source>Sheet of paper (*.pdf)</source>
        <translation>Blatt Papier (*.pdf)</translation>
    </message>
    <message>
        <source>Bitmap (*.bmp)</source>
        <translation>Rastergrafik (*.bmp)</translation>
    </message>
    <message>
        <source>Drag in the plot area</source>
        <translation>Ziehen in der Zeichenfläche</translation>
    </message>
    <message>
        <source>zooms into the box</source>
        <translation>vergrößert den Ausschnitt</translation>
    </message>
    <message>
        <source>Right click in the plot area</source>
        <translation>Rechtsklick in der Zeichenfläche</translation>
    </message>
    <message>
        <source>shows everything</source>
        <translation>zeigt alles</translation>
    </message>
    <message>
        <source>Shift + click, Shift + right click</source>
        <translation>Umschalt + Klick, Umschalt + Rechtsklick</translation>
    </message>
    <message>
        <source>zooms in, zooms out</source>
        <translation>vergrößert, verkleinert</translation>
    </message>
    <message>
        <source>Drag a graph, an edge, the legend</source>
        <translation>Diagramm, Rand oder Legende ziehen</translation>
    </message>
    <message>
        <source>moves it</source>
        <translation>verschiebt sie</translation>
    </message>
    <message>
        <source>Ctrl + click, Ctrl + right click</source>
        <translation>Strg + Klick, Strg + Rechtsklick</translation>
    </message>
    <message>
        <source>brings the legend here, shows or hides it</source>
        <translation>holt die Legende hierher, blendet sie ein oder aus</translation>
    </message>
    <message>
        <source>Alt + click, Alt + right click</source>
        <translation>Alt + Klick, Alt + Rechtsklick</translation>
    </message>
    <message>
        <source>shows or hides the cross-hair, changes its lines</source>
        <translation>blendet das Fadenkreuz ein oder aus, wechselt seine Linien</translation>
    </message>
    <message>
        <source>Wheel (Shift: across, Ctrl: upright)</source>
        <translation>Rad (Umschalt: waagrecht, Strg: senkrecht)</translation>
    </message>
    <message>
        <source>zooms about the pointer</source>
        <translation>vergrößert um den Zeiger</translation>
    </message>
    <message>
        <source>Drag with the middle button</source>
        <translation>Ziehen mit der mittleren Taste</translation>
    </message>
    <message>
        <source>moves what is shown</source>
        <translation>verschiebt den Ausschnitt</translation>
    </message>
    <message>
        <source>Two fingers</source>
        <translation>Zwei Finger</translation>
    </message>
    <message>
        <source>zoom</source>
        <translation>vergrößern</translation>
    </message>
    <message>
        <source>Arrows; + and -; Home</source>
        <translation>Pfeile; + und -; Pos1</translation>
    </message>
    <message>
        <source>move what is shown; zoom; show everything</source>
        <translation>verschieben den Ausschnitt; vergrößern; alles zeigen</translation>
    </message>
    <message>
        <source>Ctrl + arrows</source>
        <translation>Strg + Pfeile</translation>
    </message>
    <message>
        <source>read point by point, data set by data set</source>
        <translation>lesen Punkt für Punkt, Reihe für Reihe</translation>
    </message>
    <message>
        <source>Alt + Left, Alt + Right</source>
        <translation>Alt + Links, Alt + Rechts</translation>
    </message>
    <message>
        <source>undo and redo zooming</source>
        <translation>Vergrößern zurücknehmen und wiederholen</translation>
    </message>
    <message>
        <source>Tab, Shift + Tab</source>
        <translation>Tab, Umschalt + Tab</translation>
    </message>
    <message>
        <source>go to the next, the previous graph</source>
        <translation>gehen zum nächsten, zum vorigen Diagramm</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>takes a drag back</source>
        <translation>nimmt ein Ziehen zurück</translation>
    </message>
    <message>
        <source>This could not be done.
%1</source>
        <translation>Das ist nicht gelungen.
%1</translation>
    </message>
    <message>
        <source>Save the page</source>
        <translation>Seite speichern</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Save as...</source>
        <translation>&amp;Speichern unter ...</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>&amp;Drucken ...</translation>
    </message>
    <message>
        <source>&amp;Undo zoom</source>
        <translation>Vergrößern &amp;zurücknehmen</translation>
    </message>
    <message>
        <source>Show &amp;everything</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>&amp;Gestures and keys</source>
        <translation>&amp;Gesten und Tasten</translation>
    </message>
</context>
<context>
    <name>qv::qt::QvGraphWidget</name>
    <message>
        <source>Graph page</source>
        <translation>Diagrammseite</translation>
    </message>
</context>
</TS>
