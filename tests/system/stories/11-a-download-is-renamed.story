# Downloads get names. Two downloads on a pocket PC, whose soft keyboard comes up over the prompt.
$ mkdir -p 'My Documents/Quorin' && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > 'My Documents/Quorin/drivers.txt'
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\nSoil Meter|qrn0002.txt|20070302|\n' > 'My Documents/Quorin/qrnctrl.txt'
$ quorin-console --device pocketpc --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
# Back returns no name while no prompt has been answered since the start.
> choose Rename
>> choose Back
{"done":"choose"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> choose Rename
>> screen
{"screen":"ScrInput","previous":"ScrDownloads","title":{"visible":true,"cells":[["Rename"]],"widths":[240],"heights":[17],"box":[0,0,240,17]},"grid":{"visible":false,"enabled":true,"row":0,"col":0,"top":0,"cells":[[""]],"widths":[238],"heights":[17],"box":[0,16,240,304],"font":["Tahoma",8]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":[]},{"caption":"Ok","visible":true,"enabled":true,"items":[]}],"input":{"kind":"text","text":"qrn0001.txt","box":[0,16,240,19],"multiline":false},"status":null,"focus":"txtInputField","form":[0,0,240,320]}
{"done":"screen"}
# The keyboard covers the lower 80 pixels, later the upper ones, and
# disappears: the form and its field use the rest of the screen.
>> keyboard -1 0 240 240 80
{"done":"keyboard"}
>> screen
{"screen":"ScrInput","previous":"ScrDownloads","title":{"visible":true,"cells":[["Rename"]],"widths":[240],"heights":[17],"box":[0,0,240,17]},"grid":{"visible":false,"enabled":true,"row":0,"col":0,"top":0,"cells":[[""]],"widths":[238],"heights":[17],"box":[0,16,240,224],"font":["Tahoma",8]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":[]},{"caption":"Ok","visible":true,"enabled":true,"items":[]}],"input":{"kind":"text","text":"qrn0001.txt","box":[0,16,240,19],"multiline":false},"status":null,"focus":"txtInputField","form":[0,0,240,240]}
{"done":"screen"}
>> keyboard -1 0 0 240 80
{"done":"keyboard"}
>> screen
{"screen":"ScrInput","previous":"ScrDownloads","title":{"visible":true,"cells":[["Rename"]],"widths":[240],"heights":[17],"box":[0,0,240,17]},"grid":{"visible":false,"enabled":true,"row":0,"col":0,"top":0,"cells":[[""]],"widths":[238],"heights":[17],"box":[0,16,240,224],"font":["Tahoma",8]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":[]},{"caption":"Ok","visible":true,"enabled":true,"items":[]}],"input":{"kind":"text","text":"qrn0001.txt","box":[0,16,240,19],"multiline":false},"status":null,"focus":"txtInputField","form":[0,80,240,240]}
{"done":"screen"}
>> keyboard 0 0 240 240 80
{"done":"keyboard"}
>> screen
{"screen":"ScrInput","previous":"ScrDownloads","title":{"visible":true,"cells":[["Rename"]],"widths":[240],"heights":[17],"box":[0,0,240,17]},"grid":{"visible":false,"enabled":true,"row":0,"col":0,"top":0,"cells":[[""]],"widths":[238],"heights":[17],"box":[0,16,240,304],"font":["Tahoma",8]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":[]},{"caption":"Ok","visible":true,"enabled":true,"items":[]}],"input":{"kind":"text","text":"qrn0001.txt","box":[0,16,240,19],"multiline":false},"status":null,"focus":"txtInputField","form":[0,0,240,320]}
{"done":"screen"}
>> type " (north)"
{"done":"type"}
>> choose Ok
{"done":"choose"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt (north)
      qrn0002.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
# Back returns the last answer that was given, not an empty one: the second download gets the name of the first.
> hold 1
{"done":"hold"}
> choose Rename
>> choose Back
{"done":"choose"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt (north)
      qrn0001.txt (north)
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
# The present name changes nothing, and neither does an empty one: a name can't be removed.
> hold 1
{"done":"hold"}
> choose Rename
>> type " (south)"
{"done":"type"}
>> choose Ok
{"done":"choose"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> hold 1
{"done":"hold"}
> choose Rename
>> choose Ok
{"done":"choose"}
{"done":"choose"}
> choose Rename
>> set ""
{"done":"set"}
>> choose Ok
{"done":"choose"}
{"done":"choose"}
# From now on Back returns an empty answer.
> choose Rename
>> close
{"done":"close"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt (north)
      qrn0001.txt (north) (south)
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
$ cat 'My Documents/Quorin/qrnctrl.txt'
DRIVER|FILE|DATE|ALIAS
Soil Meter|qrn0001.txt|20070301|qrn0001.txt (north)
Soil Meter|qrn0002.txt|20070302|qrn0001.txt (north) (south)
