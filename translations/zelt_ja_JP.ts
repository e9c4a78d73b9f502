<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>AEPoint</name>
    <message>
        <source>Number of this energy</source>
        <translation>このエネルギーの番号</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Use this energy in the calculations</source>
        <translation>このエネルギーを計算に使う</translation>
    </message>
    <message>
        <source>V</source>
        <translation>V</translation>
    </message>
    <message>
        <source>V point: the energy at which the valence is calculated</source>
        <translation>V 点：価数を求めるエネルギー</translation>
    </message>
    <message>
        <source>LCF</source>
        <translation>LCF</translation>
    </message>
    <message>
        <source>Use this energy in the linear combination fit</source>
        <translation>このエネルギーを線形結合フィッティングに使う</translation>
    </message>
    <message>
        <source>Energy[eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>Energy of this map in eV; taken from the file when it has one</source>
        <translation>このマップのエネルギー (eV)。ファイルに記載があればそれを使う</translation>
    </message>
    <message>
        <source>Map file</source>
        <translation>マップファイル</translation>
    </message>
    <message>
        <source>Show this map in the data map window</source>
        <translation>このマップをデータマップに表示する</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>全体試料</translation>
    </message>
    <message>
        <source>Absorption of the target at this energy, less its background line</source>
        <translation>このエネルギーでの全体試料の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 1</source>
        <translation>標準 1</translation>
    </message>
    <message>
        <source>Absorption of reference 1 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 1 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 2</source>
        <translation>標準 2</translation>
    </message>
    <message>
        <source>Absorption of reference 2 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 2 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 3</source>
        <translation>標準 3</translation>
    </message>
    <message>
        <source>Absorption of reference 3 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 3 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Ref 4</source>
        <translation>標準 4</translation>
    </message>
    <message>
        <source>Absorption of reference 4 at this energy, less its background line</source>
        <translation>このエネルギーでの標準試料 4 の吸収（バックグラウンドを引いた値）</translation>
    </message>
    <message>
        <source>Cannot read %1</source>
        <translation>%1 を読めません</translation>
    </message>
    <message>
        <source>No map data in %1</source>
        <translation>%1 にマップデータがありません</translation>
    </message>
    <message>
        <source>No map size in %1</source>
        <translation>%1 にマップの大きさがありません</translation>
    </message>
    <message>
        <source>%1 points, not %2</source>
        <translation>%1 点（%2 ではない）</translation>
    </message>
    <message>
        <source>Energy %1: choose a map</source>
        <translation>エネルギー %1：マップを選択</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません：%2</translation>
    </message>
    <message>
        <source>Not enough memory for %1</source>
        <translation>%1 を読み込むメモリが足りません</translation>
    </message>
    <message>
        <source>No map data in %1: a line is longer than 64 MB</source>
        <translation>%1 にマップデータがありません：64 MB を超える行があります</translation>
    </message>
</context>
<context>
    <name>AFileSelect</name>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>The chosen file; drop a file here to choose it</source>
        <translation>選んだファイル。ここにドロップしても選べる</translation>
    </message>
    <message>
        <source>Choose a file in a dialog</source>
        <translation>ダイアログでファイルを選ぶ</translation>
    </message>
    <message>
        <source>Sel.</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Clear the choice</source>
        <translation>選択を取り消す</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>dE[eV]</source>
        <translation>dE[eV]</translation>
    </message>
    <message>
        <source>Energy shift in eV, subtracted from every energy of the spectrum</source>
        <translation>エネルギーシフト (eV)。スペクトルの全エネルギーから引く</translation>
    </message>
    <message>
        <source>All (* *.*)</source>
        <translation>すべて (* *.*)</translation>
    </message>
    <message>
        <source>Data Files (*.dat)</source>
        <translation>データファイル (*.dat)</translation>
    </message>
    <message>
        <source>%1 exists already.
Do you want to replace it?</source>
        <translation>%1 は既にあります。
置き換えますか？</translation>
    </message>
    <message>
        <source>Name a file to write</source>
        <translation>書き込むファイルの名前</translation>
    </message>
    <message>
        <source>Choose files</source>
        <translation>ファイルの選択</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>ファイルの選択</translation>
    </message>
</context>
<context>
    <name>ARefFile</name>
    <message>
        <source>Ref 1</source>
        <translation>標準 1</translation>
    </message>
    <message>
        <source>Use this reference in the calculations</source>
        <translation>この標準試料を計算に使う</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Valence</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>Valence of the reference compound, a number without unit</source>
        <translation>標準試料の価数（単位なし）</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>比率</translation>
    </message>
    <message>
        <source>Fraction of this reference in the target, from 0 to 1</source>
        <translation>全体試料中のこの標準試料の割合 (0～1)</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>dMut</translation>
    </message>
    <message>
        <source>Edge jump of this reference in the target (dMut), dimensionless</source>
        <translation>全体試料中のこの標準試料のエッジジャンプ (dMut、無次元)</translation>
    </message>
    <message>
        <source>%1: choose a spectrum</source>
        <translation>%1：スペクトルを選択</translation>
    </message>
</context>
<context>
    <name>AXafsFileSelect</name>
    <message>
        <source>%1 is not a spectrum</source>
        <translation>%1 はスペクトルではありません</translation>
    </message>
    <message>
        <source>Cannot read %1</source>
        <translation>%1 を読めません</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません：%2</translation>
    </message>
    <message>
        <source>Eng.[eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>mut</source>
        <translation>mut</translation>
    </message>
    <message>
        <source>Edge Jump : %1</source>
        <translation>エッジジャンプ : %1</translation>
    </message>
    <message>
        <source>%1 points, %2-%3 eV, E0 %4</source>
        <translation>%1 点、%2-%3 eV、E0 %4</translation>
    </message>
</context>
<context>
    <name>Body</name>
    <message>
        <source>MainWindow</source>
        <translation>メインウィンドウ</translation>
    </message>
</context>
<context>
    <name>ColourBarMenu</name>
    <message>
        <source>Inverted</source>
        <translation>反転</translation>
    </message>
    <message>
        <source>Black, red, yellow, white</source>
        <translation>黒・赤・黄・白</translation>
    </message>
    <message>
        <source>Black, green, cyan, white</source>
        <translation>黒・緑・シアン・白</translation>
    </message>
    <message>
        <source>Black, blue, magenta, white</source>
        <translation>黒・青・マゼンタ・白</translation>
    </message>
    <message>
        <source>Red, green, blue</source>
        <translation>赤・緑・青</translation>
    </message>
    <message>
        <source>Red, blue, green</source>
        <translation>赤・青・緑</translation>
    </message>
    <message>
        <source>Green, red, blue</source>
        <translation>緑・赤・青</translation>
    </message>
    <message>
        <source>Green, blue, red</source>
        <translation>緑・青・赤</translation>
    </message>
    <message>
        <source>Blue, red, green</source>
        <translation>青・赤・緑</translation>
    </message>
    <message>
        <source>Blue, green, red</source>
        <translation>青・緑・赤</translation>
    </message>
    <message>
        <source>Red, cyan</source>
        <translation>赤・シアン</translation>
    </message>
    <message>
        <source>Green, magenta</source>
        <translation>緑・マゼンタ</translation>
    </message>
    <message>
        <source>Blue, yellow</source>
        <translation>青・黄</translation>
    </message>
    <message>
        <source>Even steps, dark blue to yellow (colour-blind safe)</source>
        <translation>均等な段階、紺から黄（色覚多様性対応）</translation>
    </message>
    <message>
        <source>Grey, black to white</source>
        <translation>グレー、黒から白</translation>
    </message>
    <message>
        <source>Limits by percentile (2nd to 98th)</source>
        <translation>パーセンタイルで上下限を設定（2～98）</translation>
    </message>
</context>
<context>
    <name>DispABase</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Right-click to copy or save this graph</source>
        <translation>右クリックでグラフをコピー・保存</translation>
    </message>
    <message>
        <source> x:</source>
        <translation> x:</translation>
    </message>
    <message>
        <source>x value under the mouse</source>
        <translation>マウス位置の x の値</translation>
    </message>
    <message>
        <source>y:</source>
        <translation>y:</translation>
    </message>
    <message>
        <source>y value under the mouse</source>
        <translation>マウス位置の y の値</translation>
    </message>
    <message>
        <source>Pop this graph out into a window of its own, or dock it back</source>
        <translation>グラフを別ウィンドウに出す／元に戻す</translation>
    </message>
    <message>
        <source>P/D</source>
        <translation>P/D</translation>
    </message>
</context>
<context>
    <name>DispArea</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
</context>
<context>
    <name>DispMBase</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Right-click to copy or save this map</source>
        <translation>右クリックでマップをコピー・保存</translation>
    </message>
    <message>
        <source>  x:</source>
        <translation>  x:</translation>
    </message>
    <message>
        <source>Column of the map under the mouse</source>
        <translation>マウス位置のマップの列</translation>
    </message>
    <message>
        <source>  y:</source>
        <translation>  y:</translation>
    </message>
    <message>
        <source>Row of the map under the mouse</source>
        <translation>マウス位置のマップの行</translation>
    </message>
    <message>
        <source>  Val:</source>
        <translation>  値:</translation>
    </message>
    <message>
        <source>Value of the map under the mouse</source>
        <translation>マウス位置のマップの値</translation>
    </message>
    <message>
        <source>Pop this map out into a window of its own, or dock it back</source>
        <translation>マップを別ウィンドウに出す／元に戻す</translation>
    </message>
    <message>
        <source>P/D</source>
        <translation>P/D</translation>
    </message>
    <message>
        <source>Value at the upper end of the colours</source>
        <translation>カラースケール上端の値</translation>
    </message>
    <message>
        <source>Value at the lower end of the colours</source>
        <translation>カラースケール下端の値</translation>
    </message>
    <message>
        <source>Upper handle of the colours at %1</source>
        <translation>カラーバーの上のつまみの値: %1</translation>
    </message>
    <message>
        <source>Lower handle of the colours at %1</source>
        <translation>カラーバーの下のつまみの値: %1</translation>
    </message>
    <message>
        <source>Standard error of the value, from the counting noise</source>
        <translation>値の標準誤差（計数ノイズによる）</translation>
    </message>
</context>
<context>
    <name>DisplayPicture</name>
    <message>
        <source>The name must end in .png or .pdf.</source>
        <translation>ファイル名の末尾は .png か .pdf にしてください。</translation>
    </message>
    <message>
        <source>There is nothing to see in this display.</source>
        <translation>この表示には何も描かれていません。</translation>
    </message>
    <message>
        <source>There was no room for all of it.</source>
        <translation>空き容量が足りず、すべてを書き込めませんでした。</translation>
    </message>
</context>
<context>
    <name>Displays</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Ref1</source>
        <translation>標準 1</translation>
    </message>
    <message>
        <source>Ref2</source>
        <translation>標準 2</translation>
    </message>
    <message>
        <source>Ref3</source>
        <translation>標準 3</translation>
    </message>
    <message>
        <source>Ref4</source>
        <translation>標準 4</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>全体試料</translation>
    </message>
    <message>
        <source>Muts</source>
        <translation>全スペクトル</translation>
    </message>
    <message>
        <source>LCF vs MPS</source>
        <translation>LCF 対 MPS</translation>
    </message>
    <message>
        <source>Histgram of a</source>
        <translation>a のヒストグラム</translation>
    </message>
    <message>
        <source>Histgram of dMut</source>
        <translation>dMut のヒストグラム</translation>
    </message>
    <message>
        <source>dMut/v or a</source>
        <translation>dMut/価数・a</translation>
    </message>
    <message>
        <source>M2/M3</source>
        <translation>M2/M3</translation>
    </message>
</context>
<context>
    <name>EnergyShift</name>
    <message>
        <source>The energy shift of the maps cannot be told: %1.</source>
        <translation>マップのエネルギーのずれは求められません: %1。</translation>
    </message>
    <message>
        <source>there is no mean spectrum of material</source>
        <translation>物質の平均スペクトルがありません</translation>
    </message>
    <message>
        <source>there are too few energies for a misfit</source>
        <translation>エネルギー点が少なく、フィットの残差が得られません</translation>
    </message>
    <message>
        <source>the misfit still falls at 2 eV</source>
        <translation>2 eV ずらしても残差が減り続けます</translation>
    </message>
    <message>
        <source>the misfit hardly depends on it</source>
        <translation>残差がずれにほとんど依存しません</translation>
    </message>
    <message>
        <source>several shifts do equally well</source>
        <translation>同程度によく合うずれが複数あります</translation>
    </message>
    <message>
        <source>Energy shift of the maps: %1 +- %2 eV, to be added to the dE of all references (misfit %3 without, %4 with it)</source>
        <translation>マップのエネルギーのずれ: %1 +- %2 eV。すべての標準試料の dE に加える値です(残差は補正なしで %3、補正ありで %4)</translation>
    </message>
</context>
<context>
    <name>FourPs</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>全体試料</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>dMut</translation>
    </message>
    <message>
        <source>Total edge jump of the target found by the non-equivalent method</source>
        <translation>非等価法で求めた全体試料の全エッジジャンプ</translation>
    </message>
    <message>
        <source>Several maps</source>
        <translation>複数のマップ</translation>
    </message>
    <message>
        <source>Choose several map files at once: they fill the rows from the first on</source>
        <translation>マップファイルをまとめて選ぶ。先頭の行から順に入る</translation>
    </message>
    <message>
        <source>Result of the linear combination fit</source>
        <translation>線形結合フィッティングの結果</translation>
    </message>
    <message>
        <source>Quality of the linear combination fit</source>
        <translation>線形結合フィッティングの良さ</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>解析法</translation>
    </message>
    <message>
        <source>4 Points Meth.</source>
        <translation>4 点法</translation>
    </message>
    <message>
        <source>Two references; anchor points and one V point</source>
        <translation>標準試料 2 つ、アンカー点と V 点 1 つを使う</translation>
    </message>
    <message>
        <source>Non Equiv. Meth.</source>
        <translation>非等価法</translation>
    </message>
    <message>
        <source>Up to four references with different edge jumps, all used energies</source>
        <translation>エッジジャンプの異なる標準試料を 4 つまで、使用する全エネルギーで解析する</translation>
    </message>
    <message>
        <source>Calc. Type for t, mu0, and k: </source>
        <translation>t, mu0, k の計算方法：</translation>
    </message>
    <message>
        <source>Exact 4 points</source>
        <translation>厳密 4 点</translation>
    </message>
    <message>
        <source>Thickness and linear background solved exactly from three anchor points</source>
        <translation>厚さと直線バックグラウンドをアンカー 3 点から厳密に解く</translation>
    </message>
    <message>
        <source>Least Square</source>
        <translation>最小二乗</translation>
    </message>
    <message>
        <source>Thickness and linear background fitted to three or more anchor points</source>
        <translation>厚さと直線バックグラウンドをアンカー 3 点以上に最小二乗で合わせる</translation>
    </message>
    <message>
        <source>B.G.Line Type:</source>
        <translation>B.G. の形：</translation>
    </message>
    <message>
        <source>Vic.</source>
        <translation>Vic.</translation>
    </message>
    <message>
        <source>Victoreen background of the non-equivalent method: mu0 + C1 L^3 + C2 L^4, L the wavelength in angstrom</source>
        <translation>非等価法のビクトリーン型バックグラウンド：mu0 + C1 L^3 + C2 L^4（L は波長、Å）</translation>
    </message>
    <message>
        <source>Linear</source>
        <translation>直線</translation>
    </message>
    <message>
        <source>Linear background of the non-equivalent method: mu0 + C1 E, E in eV</source>
        <translation>非等価法の直線バックグラウンド：mu0 + C1 E（E は eV）</translation>
    </message>
    <message>
        <source>Edge and ranges</source>
        <translation>吸収端と範囲</translation>
    </message>
    <message>
        <source>Edge[eV]</source>
        <translation>吸収端[eV]</translation>
    </message>
    <message>
        <source>Edge energy in eV; taken from the last file unless &quot;Keep&quot; is on</source>
        <translation>吸収端エネルギー (eV)。「固定」でなければ最後に読んだファイルの値になる</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>固定</translation>
    </message>
    <message>
        <source>Keep this edge energy when a new file is read</source>
        <translation>新しいファイルを読んでもこの吸収端を保つ</translation>
    </message>
    <message>
        <source>Pre Edge End [eV]</source>
        <translation>プリエッジ終端 [eV]</translation>
    </message>
    <message>
        <source>End of the pre-edge range as an offset from the edge, in eV</source>
        <translation>プリエッジ範囲の終端。吸収端からの差 (eV)</translation>
    </message>
    <message>
        <source>Post Edge Start [eV]</source>
        <translation>ポストエッジ始端 [eV]</translation>
    </message>
    <message>
        <source>Start of the post-edge range as an offset from the edge, in eV</source>
        <translation>ポストエッジ範囲の始端。吸収端からの差 (eV)</translation>
    </message>
    <message>
        <source>Lines subtracted</source>
        <translation>差し引く線</translation>
    </message>
    <message>
        <source>Refs: Sub.</source>
        <translation>標準試料：</translation>
    </message>
    <message>
        <source>Pre E. Line</source>
        <translation>プリエッジ線</translation>
    </message>
    <message>
        <source>Subtract the pre-edge line from the references</source>
        <translation>標準試料からプリエッジ線を引く</translation>
    </message>
    <message>
        <source>Post E. Line</source>
        <translation>ポストエッジ線</translation>
    </message>
    <message>
        <source>Subtract the post-edge line from the references</source>
        <translation>標準試料からポストエッジ線を引く</translation>
    </message>
    <message>
        <source>Target: Sub.</source>
        <translation>全体試料：</translation>
    </message>
    <message>
        <source>Subtract the pre-edge line from the target</source>
        <translation>全体試料からプリエッジ線を引く</translation>
    </message>
    <message>
        <source>Subtract the post-edge line from the target</source>
        <translation>全体試料からポストエッジ線を引く</translation>
    </message>
    <message>
        <source>When drawing all mut</source>
        <translation>全スペクトルの描き方</translation>
    </message>
    <message>
        <source>No normalize</source>
        <translation>規格化なし</translation>
    </message>
    <message>
        <source>Show mu as measured</source>
        <translation>測定した mu のまま表示する</translation>
    </message>
    <message>
        <source>Normalized by edge jump</source>
        <translation>エッジジャンプで規格化</translation>
    </message>
    <message>
        <source>Show (mu - pre-edge line) / edge jump</source>
        <translation>(mu − プリエッジ線) / エッジジャンプを表示する</translation>
    </message>
    <message>
        <source>Sub pre Vic.</source>
        <translation>プリエッジを引く</translation>
    </message>
    <message>
        <source>Show mu - pre-edge line</source>
        <translation>mu − プリエッジ線を表示する</translation>
    </message>
    <message>
        <source>Normalized by 2 Vics </source>
        <translation>2 本の線で規格化 </translation>
    </message>
    <message>
        <source>Show (mu - pre-edge line) / (post-edge line - pre-edge line)</source>
        <translation>(mu − プリエッジ線) / (ポストエッジ線 − プリエッジ線) を表示する</translation>
    </message>
    <message>
        <source>Full Range</source>
        <translation>全範囲</translation>
    </message>
    <message>
        <source>Show the whole scans; off: from twice the pre-edge offset to twice the post-edge offset around the edge</source>
        <translation>走査範囲の全体を表示する。オフのときは吸収端から「プリエッジの差の 2 倍」～「ポストエッジの差の 2 倍」</translation>
    </message>
    <message>
        <source>Histograms</source>
        <translation>ヒストグラム</translation>
    </message>
    <message>
        <source>From</source>
        <translation>下限</translation>
    </message>
    <message>
        <source>To</source>
        <translation>上限</translation>
    </message>
    <message>
        <source>Boxes</source>
        <translation>区間数</translation>
    </message>
    <message>
        <source>Valence</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>Centre of the first box of the histogram of valence</source>
        <translation>価数ヒストグラムの最初の区間の中心</translation>
    </message>
    <message>
        <source>Centre of the last box of the histogram of valence</source>
        <translation>価数ヒストグラムの最後の区間の中心</translation>
    </message>
    <message>
        <source>Number of boxes of the histogram of valence</source>
        <translation>価数ヒストグラムの区間数</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>Set the range from the references before each calculation</source>
        <translation>計算のたびに標準試料から範囲を決める</translation>
    </message>
    <message>
        <source>t/ts</source>
        <translation>t/ts</translation>
    </message>
    <message>
        <source>Centre of the first box of the histogram of thickness (t/ts, or the total edge jump of the non-equivalent method)</source>
        <translation>厚さヒストグラムの最初の区間の中心（t/ts、非等価法では全エッジジャンプ）</translation>
    </message>
    <message>
        <source>Centre of the last box of the histogram of thickness (t/ts, or the total edge jump of the non-equivalent method)</source>
        <translation>厚さヒストグラムの最後の区間の中心（t/ts、非等価法では全エッジジャンプ）</translation>
    </message>
    <message>
        <source>Number of boxes of the histogram of thickness (t/ts, or the total edge jump of the non-equivalent method)</source>
        <translation>厚さヒストグラムの区間数（t/ts、非等価法では全エッジジャンプ）</translation>
    </message>
    <message>
        <source>per reference</source>
        <translation>標準試料別</translation>
    </message>
    <message>
        <source>Outline in the histogram of valence the pixels in which a reference makes up half or more (non-equivalent method)</source>
        <translation>ある標準試料が半分以上を占める画素を価数ヒストグラムに線で示す（非等価法）</translation>
    </message>
    <message>
        <source>Outline in the histogram of thickness the pixels in which a reference makes up half or more (non-equivalent method)</source>
        <translation>ある標準試料が半分以上を占める画素を厚さヒストグラムに線で示す（非等価法）</translation>
    </message>
    <message>
        <source>Calc.</source>
        <translation>計算</translation>
    </message>
    <message>
        <source>LCF</source>
        <translation>LCF</translation>
    </message>
    <message>
        <source>Fit the target by the references over the energies marked LCF</source>
        <translation>LCF を付けたエネルギーの範囲で全体試料を標準試料の和でフィットする</translation>
    </message>
    <message>
        <source>More Conds</source>
        <translation>詳細条件</translation>
    </message>
    <message>
        <source>Show or hide what is rarely changed</source>
        <translation>あまり変えない条件を表示・非表示にする</translation>
    </message>
    <message>
        <source>Show Graphs</source>
        <translation>グラフ表示</translation>
    </message>
    <message>
        <source>Show or hide the window with the graphs</source>
        <translation>グラフのウィンドウを表示・非表示にする</translation>
    </message>
    <message>
        <source>Show Data Map</source>
        <translation>データマップ表示</translation>
    </message>
    <message>
        <source>Show or hide the window with a measured map</source>
        <translation>測定マップのウィンドウを表示・非表示にする</translation>
    </message>
    <message>
        <source>Record Select :</source>
        <translation>記録する量：</translation>
    </message>
    <message>
        <source>Ratio 1</source>
        <translation>比率 1</translation>
    </message>
    <message>
        <source>Write this quantity into the result file of the non-equivalent method</source>
        <translation>非等価法の結果ファイルにこの量を書く</translation>
    </message>
    <message>
        <source>Ratio 2</source>
        <translation>比率 2</translation>
    </message>
    <message>
        <source>Ratio 3</source>
        <translation>比率 3</translation>
    </message>
    <message>
        <source>Ratio 4</source>
        <translation>比率 4</translation>
    </message>
    <message>
        <source>dMut 1</source>
        <translation>dMut 1</translation>
    </message>
    <message>
        <source>dMut 2</source>
        <translation>dMut 2</translation>
    </message>
    <message>
        <source>dMut 3</source>
        <translation>dMut 3</translation>
    </message>
    <message>
        <source>dMut 4</source>
        <translation>dMut 4</translation>
    </message>
    <message>
        <source>mut0</source>
        <translation>mut0</translation>
    </message>
    <message>
        <source>C1</source>
        <translation>C1</translation>
    </message>
    <message>
        <source>C2</source>
        <translation>C2</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>総量</translation>
    </message>
    <message>
        <source>Hist Grams</source>
        <translation>ヒストグラムの量</translation>
    </message>
    <message>
        <source>Show the distribution of this quantity of the non-equivalent method</source>
        <translation>非等価法のこの量の分布を表示する</translation>
    </message>
    <message>
        <source>M2/M3</source>
        <translation>M2/M3</translation>
    </message>
    <message>
        <source>Show the M2/M3 scatter in a window of its own</source>
        <translation>M2/M3 散布図を別ウィンドウに表示する</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>青</translation>
    </message>
    <message>
        <source>Draw the points of the M2/M3 scatter in blue instead of red</source>
        <translation>M2/M3 散布図の点を赤ではなく青で描く</translation>
    </message>
    <message>
        <source>Spectra for display</source>
        <translation>表示用スペクトル</translation>
    </message>
    <message>
        <source>Spectra that are only shown with the others</source>
        <translation>ほかと一緒に表示するだけのスペクトル</translation>
    </message>
    <message>
        <source>The spectra chosen for display</source>
        <translation>表示用に選んだスペクトル</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Take the chosen spectrum out of the display</source>
        <translation>選んだスペクトルを表示から外す</translation>
    </message>
    <message>
        <source>Results and messages, the newest at the end</source>
        <translation>結果とメッセージ。新しいものほど下</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Empty the message area</source>
        <translation>メッセージを消去する</translation>
    </message>
    <message>
        <source>Show this quantity in the result map</source>
        <translation>この量を結果マップに表示する</translation>
    </message>
    <message>
        <source>hide below</source>
        <translation>これ未満を隠す</translation>
    </message>
    <message>
        <source>Hide the pixels whose amount (t/ts) is below this number, in this map only</source>
        <translation>総量 (t/ts) がこの値未満の画素を隠す（このマップの表示だけ）</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>The result file; the two histogram files get its name with _HGAlpha and _HGThick</source>
        <translation>結果ファイル。2 つのヒストグラムファイルは名前に _HGAlpha と _HGThick が付く</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>書き込み</translation>
    </message>
    <message>
        <source>Calc. &amp;&amp; Write</source>
        <translation>計算 &amp;&amp; 書き込み</translation>
    </message>
    <message>
        <source>Calculate the map and write the results</source>
        <translation>マップを計算して結果を書き込む</translation>
    </message>
    <message>
        <source>Ref %1</source>
        <translation>標準 %1</translation>
    </message>
    <message>
        <source>Graphs</source>
        <translation>グラフ</translation>
    </message>
    <message>
        <source>Data map</source>
        <translation>データマップ</translation>
    </message>
    <message>
        <source>V Point is not selected</source>
        <translation>V 点が選ばれていません</translation>
    </message>
    <message>
        <source>Ref File %1 is not valid.</source>
        <translation>標準試料ファイル %1 は有効ではありません。</translation>
    </message>
    <message>
        <source>Number of selected data sets %1 is less than %2.</source>
        <translation>選ばれたデータの数 %1 が %2 より少ないです。</translation>
    </message>
    <message>
        <source>V Point is not selected.</source>
        <translation>V 点が選ばれていません。</translation>
    </message>
    <message>
        <source>The 1st Ref File is not valid.</source>
        <translation>1 番目の標準試料ファイルは有効ではありません。</translation>
    </message>
    <message>
        <source>The 2nd Ref File is not valid.</source>
        <translation>2 番目の標準試料ファイルは有効ではありません。</translation>
    </message>
    <message>
        <source>Target File1 is not valid.</source>
        <translation>全体試料ファイル 1 は有効ではありません。</translation>
    </message>
    <message>
        <source>Number of selected data sets %1 is not %2.</source>
        <translation>選ばれたデータの数 %1 が %2 ではありません。</translation>
    </message>
    <message>
        <source>Number of valied Ref Files is %1, which is less than 2.</source>
        <translation>有効な標準試料ファイルは %1 個で、2 個に足りません。</translation>
    </message>
    <message>
        <source>not computed by this method</source>
        <translation>この解析法では計算されません</translation>
    </message>
    <message>
        <source>Data map, %1 eV</source>
        <translation>データマップ、%1 eV</translation>
    </message>
    <message>
        <source>MPs</source>
        <translation>MPs</translation>
    </message>
    <message>
        <source>Thick.</source>
        <translation>厚さ</translation>
    </message>
    <message>
        <source>Num.</source>
        <translation>画素数</translation>
    </message>
    <message>
        <source>Eng.[eV]</source>
        <translation>E [eV]</translation>
    </message>
    <message>
        <source>mut</source>
        <translation>mut</translation>
    </message>
    <message>
        <source>%1 eV: %2</source>
        <translation>%1 eV: %2</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>M3</source>
        <translation>M3</translation>
    </message>
    <message>
        <source>Can&apos;t open the file [%1]</source>
        <translation>ファイル [%1] を開けません</translation>
    </message>
    <message>
        <source>Can&apos;t write the file [%1]</source>
        <translation>ファイル [%1] に書き込めません</translation>
    </message>
    <message>
        <source>3ps: a = %1, Valence = %2</source>
        <translation>3点法：a = %1, 価数 = %2</translation>
    </message>
    <message>
        <source>a = %1, Valence = %2, t/ts = %3</source>
        <translation>a = %1, 価数 = %2, t/ts = %3</translation>
    </message>
    <message>
        <source>4ps2: a = %1, Valence = %2, t/ts = %3</source>
        <translation>4点法(最小二乗)：a = %1, 価数 = %2, t/ts = %3</translation>
    </message>
    <message>
        <source>The map of %1 x %2 pixels is too large.</source>
        <translation>%1 x %2 画素のマップは大きすぎます。</translation>
    </message>
    <message>
        <source>Energy Range is not selected, which should by selected by CB of TR.</source>
        <translation>エネルギー範囲が選ばれていません。エネルギーの行の LCF で選んでください。</translation>
    </message>
    <message>
        <source>Number of Valid Reference files is %1, which is less than 2</source>
        <translation>有効な標準試料ファイルは %1 個で、2 個に足りません</translation>
    </message>
    <message>
        <source>R = %1, %2 points</source>
        <translation>R = %1、%2 点</translation>
    </message>
    <message>
        <source>R = sum of (y - fit)^2 / sum of y^2; standard errors of the coefficients:</source>
        <translation>R = Σ(y − フィット)^2 / Σy^2。係数の標準誤差：</translation>
    </message>
    <message>
        <source>Reference %1: %2 ± %3</source>
        <translation>標準試料 %1：%2 ± %3</translation>
    </message>
    <message>
        <source>Base: %1 ± %2</source>
        <translation>ベース：%1 ± %2</translation>
    </message>
    <message>
        <source>%1 map files were chosen; the first %2 were taken.</source>
        <translation>マップファイルが %1 個選ばれたので、最初の %2 個を使いました。</translation>
    </message>
    <message>
        <source>%1 is not a spectrum file.</source>
        <translation>%1 はスペクトルファイルではありません。</translation>
    </message>
    <message>
        <source>Save shown map as text...</source>
        <translation>表示中のマップをテキストで保存...</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>中心</translation>
    </message>
    <message>
        <source>Result of LCF :: </source>
        <translation>LCF の結果 :: </translation>
    </message>
    <message>
        <source>, Valence = %1, Base = %2</source>
        <translation>, 価数 = %1, ベース = %2</translation>
    </message>
    <message>
        <source>Result of NEQ :: </source>
        <translation>NEQ の結果 :: </translation>
    </message>
    <message>
        <source>, Valence = %1, t = %2</source>
        <translation>, 価数 = %1, t = %2</translation>
    </message>
    <message>
        <source>Copy conditions</source>
        <translation>条件をコピー</translation>
    </message>
    <message>
        <source>Put all inputs and settings on the clipboard, as a job that flokluk-batch can run again</source>
        <translation>入力と設定をすべて、flokluk-batch で再実行できるジョブとしてクリップボードに入れます</translation>
    </message>
    <message>
        <source>Can&apos;t write the histograms of [%1]</source>
        <translation>[%1] のヒストグラムを書き込めません</translation>
    </message>
    <message>
        <source>The conditions are on the clipboard.</source>
        <translation>条件をクリップボードにコピーしました。</translation>
    </message>
    <message>
        <source>Result map, %1</source>
        <translation>結果マップ、%1</translation>
    </message>
    <message>
        <source>The coefficients c sum up to S = %1. V is the sum of c times valence; of the fractions c / S it is V / S = %2.</source>
        <translation>係数 c の和は S = %1 です。V は c と価数の積の和で、割合 c / S による価数は V / S = %2 です。</translation>
    </message>
    <message>
        <source>%1: valence</source>
        <translation>%1: 価数</translation>
    </message>
    <message>
        <source>%1: spectrum</source>
        <translation>%1: スペクトル</translation>
    </message>
    <message>
        <source>%1: values at the energies or edge jump</source>
        <translation>%1: 各エネルギーの値またはエッジジャンプ</translation>
    </message>
    <message>
        <source>Energy %1: value</source>
        <translation>エネルギー %1: 値</translation>
    </message>
    <message>
        <source>Energy %1: map file</source>
        <translation>エネルギー %1: マップファイル</translation>
    </message>
    <message>
        <source>Energies in use</source>
        <translation>使用するエネルギー</translation>
    </message>
    <message>
        <source>V Point</source>
        <translation>V 点</translation>
    </message>
    <message>
        <source>References in use</source>
        <translation>使用する標準試料</translation>
    </message>
    <message>
        <source>Changed since the map was calculated: %1</source>
        <translation>マップの計算後に変更: %1</translation>
    </message>
    <message>
        <source>Map Select</source>
        <translation>マップの選択</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>このウィンドウを閉じる</translation>
    </message>
    <message>
        <source>Target: choose a spectrum</source>
        <translation>全体試料：スペクトルを選択</translation>
    </message>
    <message>
        <source>Several maps: choose their files</source>
        <translation>複数のマップ：ファイルを選択</translation>
    </message>
    <message>
        <source>Spectra for display: choose their files</source>
        <translation>表示用スペクトル：ファイルを選択</translation>
    </message>
    <message>
        <source>Results: name a file to write</source>
        <translation>結果：書き込むファイル名</translation>
    </message>
    <message>
        <source>%1: the pre-edge range holds %2 points (data %3)</source>
        <translation>%1: プリエッジ範囲の点は %2 個です (データ %3)</translation>
    </message>
    <message>
        <source>%1: the post-edge range holds %2 points (data %3)</source>
        <translation>%1: ポストエッジ範囲の点は %2 個です (データ %3)</translation>
    </message>
    <message>
        <source>Energy %1: %2 eV is outside of %3 (%4)</source>
        <translation>エネルギー %1: %2 eV は %3 の範囲外です (%4)</translation>
    </message>
    <message>
        <source>Energy %1: the map has %2 x %3 pixels, that of energy %4 %5 x %6</source>
        <translation>エネルギー %1: マップは %2 x %3 画素、エネルギー %4 は %5 x %6 画素です</translation>
    </message>
    <message>
        <source>%1: the valence is no number and counts as 0</source>
        <translation>%1: 価数が数値でないため 0 とします</translation>
    </message>
    <message>
        <source>Target: energies are marked LCF, but there is no spectrum</source>
        <translation>全体試料: LCF のエネルギーが選ばれていますが、スペクトルがありません</translation>
    </message>
    <message>
        <source>saved the values of &quot;%1&quot; on the clipboard</source>
        <translation>「%1」の値をクリップボードに保存しました</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>吸収端</translation>
    </message>
    <message>
        <source>end of the pre-edge range</source>
        <translation>プリエッジ終端</translation>
    </message>
    <message>
        <source>start of the post-edge range</source>
        <translation>ポストエッジ始端</translation>
    </message>
    <message>
        <source>energy %1</source>
        <translation>エネルギー %1</translation>
    </message>
    <message>
        <source>%1 %2 -&gt; %3</source>
        <translation>%1 %2 -&gt; %3</translation>
    </message>
    <message>
        <source>saved %1</source>
        <translation>%1 を保存しました</translation>
    </message>
    <message>
        <source>%1 x %2 pixels, %3 energies, %4 s</source>
        <translation>%1 x %2 画素、%3 エネルギー、%4 秒</translation>
    </message>
    <message>
        <source>changed; press Calc. for a new map</source>
        <translation>変更あり。「計算」を押すとマップを計算し直します</translation>
    </message>
    <message>
        <source>%1: wrote %2 (inputs changed since)</source>
        <translation>%1：%2 を保存（その後、入力が変更されています）</translation>
    </message>
    <message>
        <source>%1: wrote %2 and its histograms</source>
        <translation>%1：%2 とヒストグラムを保存しました</translation>
    </message>
    <message>
        <source>Load conditions...</source>
        <translation>条件を読み込む...</translation>
    </message>
    <message>
        <source>Take all inputs and settings from a job file; a job dropped on the window does the same</source>
        <translation>ジョブファイルからすべての入力と設定を読み込む。ウィンドウにジョブをドロップしても同じ</translation>
    </message>
    <message>
        <source>Calculate the map (Ctrl+Return); a dot shows that an input has changed since</source>
        <translation>マップを計算する（Ctrl+Return）。点の印は、前回の計算後に入力が変わったことを示す</translation>
    </message>
    <message>
        <source>Write the results of the last calculation (Ctrl+S)</source>
        <translation>最後の計算の結果を書き込む（Ctrl+S）</translation>
    </message>
    <message>
        <source>Load conditions: choose a job</source>
        <translation>条件の読み込み：ジョブを選択</translation>
    </message>
    <message>
        <source>Jobs (*.json);;All (* *.*)</source>
        <translation>ジョブ (*.json);;すべて (* *.*)</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 ほか %2 個</translation>
    </message>
    <message>
        <source>%1 is neither a spectrum nor a map, nor a job that was dropped alone.</source>
        <translation>%1 はスペクトルでもマップでもなく、単独でドロップされたジョブでもありません。</translation>
    </message>
    <message>
        <source>Neither spectra nor maps: %1.</source>
        <translation>スペクトルでもマップでもないファイル：%1</translation>
    </message>
    <message>
        <source>No empty place for %1.</source>
        <translation>%1 を入れる空きがありません。</translation>
    </message>
    <message>
        <source>In use with the maps they had before: energies %1.</source>
        <translation>エネルギー %1 は以前のマップのまま使用中です。</translation>
    </message>
    <message>
        <source>The conditions of %1 are loaded.</source>
        <translation>%1 の条件を読み込みました。</translation>
    </message>
    <message>
        <source>%1 is not loaded.</source>
        <translation>%1 は読み込まれませんでした。</translation>
    </message>
    <message>
        <source>Energies %1 and %2 are both marked as V Point</source>
        <translation>エネルギー %1 と %2 の両方に V が付いています</translation>
    </message>
    <message>
        <source>Energy %1: %2 eV is nearly that of energy %3</source>
        <translation>エネルギー %1：%2 eV はエネルギー %3 とほぼ同じです</translation>
    </message>
    <message>
        <source>Edge: %1 eV looks like keV</source>
        <translation>吸収端：%1 eV は keV の値のようです</translation>
    </message>
    <message>
        <source>Energy %1: %2 eV looks like keV</source>
        <translation>エネルギー %1：%2 eV は keV の値のようです</translation>
    </message>
    <message>
        <source>%1: the energies look like keV (data %2)</source>
        <translation>%1：エネルギーが keV の値のようです（データ %2）</translation>
    </message>
    <message>
        <source>Energy %1: at %2 eV %3 has no finite value (%4)</source>
        <translation>エネルギー %1：%2 eV で %3 に有限の値がありません（%4）</translation>
    </message>
    <message>
        <source>%1: the same file as %2</source>
        <translation>%1：%2 と同じファイルです</translation>
    </message>
    <message>
        <source>Energy %1</source>
        <translation>エネルギー %1</translation>
    </message>
    <message>
        <source>Energy %1: no pixel of the map has a finite absorption</source>
        <translation>エネルギー %1：有限の吸収を持つ画素がマップにありません</translation>
    </message>
    <message>
        <source>Energy %1: the intensity of every pixel is 0</source>
        <translation>エネルギー %1：すべての画素の強度が 0 です</translation>
    </message>
    <message>
        <source>Energy %1: the pixels lie up to %2 of their steps from those of energy %3</source>
        <translation>エネルギー %1：画素の位置がエネルギー %3 と最大 %2 ステップずれています</translation>
    </message>
    <message>
        <source>± above</source>
        <translation>± これより上を隠す</translation>
    </message>
    <message>
        <source>Hide the pixels whose standard error of the shown quantity is above this number, in this map only</source>
        <translation>表示している量の標準誤差がこの値を超える画素を隠す（このマップの表示だけ）</translation>
    </message>
    <message>
        <source>There is no result map yet.</source>
        <translation>結果マップはまだありません。</translation>
    </message>
    <message>
        <source>The maps have changed since the calculation; press Calc. first.</source>
        <translation>計算後にマップが変わりました。先に「計算」を押してください。</translation>
    </message>
    <message>
        <source>There are no uncertainties: the energies are fewer than the unknowns.</source>
        <translation>不確かさは求められません：エネルギー点が未知数より少ないためです。</translation>
    </message>
    <message>
        <source>There is no memory for the uncertainties.</source>
        <translation>不確かさを計算するメモリーが足りません。</translation>
    </message>
    <message>
        <source>No standard errors: as many points as unknowns.</source>
        <translation>標準誤差はありません：点の数が未知数と同じです。</translation>
    </message>
    <message>
        <source>Ratio %1: %2</source>
        <translation>比率 %1：%2</translation>
    </message>
    <message>
        <source>(68 %: standard error times Student&apos;s factor %1 for n - p = %2)</source>
        <translation>（68 %：標準誤差に Student の係数 %1 を掛けた値、n - p = %2）</translation>
    </message>
    <message>
        <source>No pixel of this region has intensities and a result.</source>
        <translation>この領域には、強度と結果のある画素がありません。</translation>
    </message>
    <message>
        <source>V %1, t %2, %3 pixels, scatter %4 (expected %5)</source>
        <translation>V %1、t %2、%3 画素、ばらつき %4（予想 %5）</translation>
    </message>
    <message>
        <source>, chi² %1</source>
        <translation>、χ² %1</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>領域</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>画素数</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>平均</translation>
    </message>
    <message>
        <source>Median</source>
        <translation>中央値</translation>
    </message>
    <message>
        <source>Scatter</source>
        <translation>ばらつき</translation>
    </message>
    <message>
        <source>Expected</source>
        <translation>予想</translation>
    </message>
    <message>
        <source>chi²</source>
        <translation>χ²</translation>
    </message>
    <message>
        <source>There are %1 regions already; clear them first.</source>
        <translation>領域はすでに %1 個あります。先に消去してください。</translation>
    </message>
    <message>
        <source>Region: this pixel</source>
        <translation>領域：この画素</translation>
    </message>
    <message>
        <source>Point at a pixel of the result map first.</source>
        <translation>先に結果マップの画素を指してください。</translation>
    </message>
    <message>
        <source>Region: above thickness...</source>
        <translation>領域：厚さが指定値以上...</translation>
    </message>
    <message>
        <source>Regions: show</source>
        <translation>領域：表示</translation>
    </message>
    <message>
        <source>Regions: clear</source>
        <translation>領域：すべて消去</translation>
    </message>
    <message>
        <source>Region: above thickness</source>
        <translation>領域：厚さが指定値以上</translation>
    </message>
    <message>
        <source>All pixels with at least this amount (t/ts):</source>
        <translation>総量 (t/ts) がこの値以上のすべての画素：</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>値</translation>
    </message>
    <message>
        <source>± (standard error)</source>
        <translation>±（標準誤差）</translation>
    </message>
    <message>
        <source>Misfit (chi² / (n - p))</source>
        <translation>不一致度 (χ² / (n - p))</translation>
    </message>
    <message>
        <source>There is no misfit: as many energies as unknowns.</source>
        <translation>不一致度はありません：エネルギー点の数が未知数と同じです。</translation>
    </message>
    <message>
        <source>%1 has no standard error.</source>
        <translation>%1 には標準誤差がありません。</translation>
    </message>
    <message>
        <source>misfit</source>
        <translation>不一致度</translation>
    </message>
    <message>
        <source>Energy %1: the records are in another order than the header says: x is %2 in record %3 and %4 in record %5</source>
        <translation>エネルギー %1：レコードの順序がヘッダーと異なります。x はレコード %3 で %2、レコード %5 で %4 です</translation>
    </message>
    <message>
        <source>Energy %1: the records are in another order than the header says: y is %2 in record %3 and %4 in record %5</source>
        <translation>エネルギー %1：レコードの順序がヘッダーと異なります。y はレコード %3 で %2、レコード %5 で %4 です</translation>
    </message>
    <message>
        <source>Energy %1: the map has %2 records, not %3 x %4 = %5</source>
        <translation>エネルギー %1：マップのレコード数は %2 で、%3 x %4 = %5 ではありません</translation>
    </message>
    <message>
        <source>Energy %1: %2 of %3 records have a value that is no number and counts as 0 (decimals take a point)</source>
        <translation>エネルギー %1：%3 レコード中 %2 に数値でない値があり、0 として扱われます（小数点には . を使います）</translation>
    </message>
    <message>
        <source>Energy %1: the map file changed while it was read</source>
        <translation>エネルギー %1：読み込み中にマップファイルが変更されました</translation>
    </message>
    <message>
        <source>Open the manual (F1)</source>
        <translation>マニュアルを開く（F1）</translation>
    </message>
    <message>
        <source>en</source>
        <extracomment>the folder of the manual in this language</extracomment>
        <translation>ja</translation>
    </message>
    <message>
        <source>The manual is not installed.</source>
        <translation>マニュアルがインストールされていません。</translation>
    </message>
    <message>
        <source>There is no program that opens %1.</source>
        <translation>%1 を開けるプログラムがありません。</translation>
    </message>
    <message>
        <source>Plan energies...</source>
        <translation>エネルギーを計画...</translation>
    </message>
    <message>
        <source>Choose the energies to measure, for the references loaded and the method that is set</source>
        <translation>読み込んだ標準試料と選んだ計算法に合わせて、測定するエネルギーを決める</translation>
    </message>
    <message>
        <source>Import...</source>
        <translation>インポート...</translation>
    </message>
    <message>
        <source>Make maps, spectra and a job of HDF5, TIFF, stacks, XDI or Athena files; such a file dropped on the window does the same</source>
        <translation>HDF5、TIFF、スタック、XDI、Athena のファイルからマップ、スペクトル、ジョブを作ります。ウィンドウにドロップしても同じです</translation>
    </message>
    <message>
        <source>with job</source>
        <translation>ジョブも</translation>
    </message>
    <message>
        <source>Write the job that repeats the calculation, too: a file for flokluk-batch beside the result, with its name and .json</source>
        <translation>この計算をやり直すジョブも。結果の隣に、同じ名前に .json を付けた flokluk-batch 用のファイルができる</translation>
    </message>
    <message>
        <source>%1: the range of the LCF holds %2 points</source>
        <translation>%1: LCF の範囲に点が %2 個しかありません</translation>
    </message>
    <message>
        <source>Energy %1: either this map or that of energy %2 has no I0, so that I counts as the absorption</source>
        <translation>エネルギー %1：このマップとエネルギー %2 のマップの一方に I0 がなく、I が吸収として扱われます</translation>
    </message>
    <message>
        <source>There are no uncertainties: the maps have no intensities, and with as many unknowns as energies nothing else tells the noise.</source>
        <translation>不確かさは求められません：マップに強度がなく、未知数がエネルギー点と同数で、ノイズを知る手がかりがないためです。</translation>
    </message>
    <message>
        <source>Energy shift of the maps...</source>
        <translation>マップのエネルギーのずれ...</translation>
    </message>
    <message>
        <source>The dE of all references was changed by %1 eV.</source>
        <translation>すべての標準試料の dE を %1 eV 変更しました。</translation>
    </message>
    <message>
        <source>%1 is not written: it would calculate something else than the results, press Calc. first.</source>
        <translation>%1 は書き込みません。今の設定では結果と異なる計算になります。先に「計算」を押してください。</translation>
    </message>
    <message>
        <source>%1 is not written: there are no results that it could repeat.</source>
        <translation>%1 は書き込みません。やり直す対象の結果がありません。</translation>
    </message>
    <message>
        <source>%1 is not written: there is a file of that name which the program has not written.</source>
        <translation>%1 は書き込みません。このプログラムが書いたものではない同名のファイルがあります。</translation>
    </message>
    <message>
        <source>Can&apos;t write the job %1</source>
        <translation>ジョブ %1 を書き込めません</translation>
    </message>
    <message>
        <source>Of the %1 regions the first %2 were taken.</source>
        <translation>%1 個の領域のうち最初の %2 個を取り込みました。</translation>
    </message>
    <message>
        <source>%1 is not written: the job of that name has been edited since the program wrote it, or an early version wrote it. Rename or delete it.</source>
        <translation>%1 は書き込みません。同名のジョブは、プログラムが書いた後で編集されたか、古い版が書いたものです。名前を変えるか削除してください。</translation>
    </message>
</context>
<context>
    <name>HeaderMenu</name>
    <message>
        <source>Save picture</source>
        <translation>画像の保存</translation>
    </message>
    <message>
        <source>Copy picture</source>
        <translation>画像をコピー</translation>
    </message>
    <message>
        <source>Save picture...</source>
        <translation>画像を保存...</translation>
    </message>
    <message>
        <source>Copy values</source>
        <translation>値をコピー</translation>
    </message>
    <message>
        <source>The picture could not be saved as %1: %2</source>
        <translation>画像を %1 に保存できませんでした：%2</translation>
    </message>
    <message>
        <source>PNG picture (*.png)</source>
        <translation>PNG 画像 (*.png)</translation>
    </message>
    <message>
        <source>PDF, vectors (*.pdf)</source>
        <translation>PDF（ベクトル） (*.pdf)</translation>
    </message>
    <message>
        <source>How to...</source>
        <translation>操作方法...</translation>
    </message>
    <message>
        <source>Picture, values, and what the mouse does</source>
        <translation>画像、値、マウスの操作方法</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>ホイール</translation>
    </message>
    <message>
        <source>zooms about the mouse</source>
        <translation>マウスの位置を中心に拡大・縮小</translation>
    </message>
    <message>
        <source>Wheel over an axis</source>
        <translation>軸の上でホイール</translation>
    </message>
    <message>
        <source>zooms along that axis</source>
        <translation>その軸の方向だけ拡大・縮小</translation>
    </message>
    <message>
        <source>Shift and drag</source>
        <translation>Shift を押しながらドラッグ</translation>
    </message>
    <message>
        <source>moves the picture</source>
        <translation>表示範囲を移動</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>ダブルクリック</translation>
    </message>
    <message>
        <source>shows everything again; in a result map in the quantity&apos;s own colours</source>
        <translation>全体表示に戻す。結果マップでは色の範囲も量に固有のものに戻る</translation>
    </message>
    <message>
        <source>Shift and double click</source>
        <translation>Shift を押しながらダブルクリック</translation>
    </message>
    <message>
        <source>result map: colours from the smallest to the largest value shown</source>
        <translation>結果マップ: 色の範囲を表示中の値の最小から最大まで</translation>
    </message>
    <message>
        <source>Control and double click</source>
        <translation>Control を押しながらダブルクリック</translation>
    </message>
    <message>
        <source>result map: colours from the 2nd to the 98th percentile of them</source>
        <translation>結果マップ: 色の範囲を表示中の値の 2～98 パーセンタイルに</translation>
    </message>
    <message>
        <source>Drag an end of the colour bar</source>
        <translation>カラーバーの端をドラッグ</translation>
    </message>
    <message>
        <source>stretches the colours; a double click on the bar undoes it</source>
        <translation>色を伸縮。バーのダブルクリックで元に戻る</translation>
    </message>
    <message>
        <source>Right click on the colour bar</source>
        <translation>カラーバーを右クリック</translation>
    </message>
    <message>
        <source>other colours, limits by percentile</source>
        <translation>別の配色、パーセンタイルによる上下限</translation>
    </message>
    <message>
        <source>Drag a marker</source>
        <translation>マーカーをドラッグ</translation>
    </message>
    <message>
        <source>moves the edge, a range or an energy without a map; a click moves nothing</source>
        <translation>吸収端、範囲、マップのないエネルギーを移動。クリックでは何も動かない</translation>
    </message>
    <message>
        <source>Click in &quot;Muts&quot;</source>
        <translation>「全スペクトル」をクリック</translation>
    </message>
    <message>
        <source>writes the values of all spectra there into the message area</source>
        <translation>その位置での全スペクトルの値をメッセージ欄に書く</translation>
    </message>
    <message>
        <source>How to</source>
        <translation>操作方法</translation>
    </message>
    <message>
        <source>Control and drag</source>
        <translation>Control を押しながらドラッグ</translation>
    </message>
    <message>
        <source>result map: a region; its mean spectrum and fit are shown</source>
        <translation>結果マップ：領域を選び、平均スペクトルとフィットを表示する</translation>
    </message>
</context>
<context>
    <name>ImportDialog</name>
    <message>
        <source>Import</source>
        <translation>インポート</translation>
    </message>
    <message>
        <source>Images or spectra</source>
        <translation>画像またはスペクトル</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>追加...</translation>
    </message>
    <message>
        <source>Choose files: one stack of images (which may be many TIFF files), spectra, or both</source>
        <translation>ファイルを選びます: 画像スタック 1 つ (複数の TIFF ファイルでもよい)、スペクトル、またはその両方</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
    </message>
    <message>
        <source>Take all files out</source>
        <translation>すべてのファイルを外します</translation>
    </message>
    <message>
        <source>What to import, one file or folder a line; FILE::LABEL is one group or column of a file of spectra</source>
        <translation>インポートするもの、1 行に 1 つのファイルまたはフォルダー。FILE::LABEL はスペクトルファイルのグループまたは列</translation>
    </message>
    <message>
        <source>References</source>
        <translation>標準試料</translation>
    </message>
    <message>
        <source>Choose spectra of known valence; the job takes the first four</source>
        <translation>価数の分かっているスペクトルを選びます。ジョブには最初の 4 つが入ります</translation>
    </message>
    <message>
        <source>Take all references out</source>
        <translation>すべての標準試料を外します</translation>
    </message>
    <message>
        <source>Reference spectra, one a line: FILE, or FILE::LABEL for one group or column</source>
        <translation>標準試料のスペクトル、1 行に 1 つ: FILE、または グループや列を選ぶ FILE::LABEL</translation>
    </message>
    <message>
        <source>Valences</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>Valences of the references, in their order, with commas between them</source>
        <translation>標準試料の価数、順番どおりにコンマで区切ります</translation>
    </message>
    <message>
        <source>Inside of the files</source>
        <translation>ファイルの内容</translation>
    </message>
    <message>
        <source>What the files hold: layouts, datasets with their sizes, energies, groups</source>
        <translation>ファイルに入っているもの: 形式、データセットと大きさ、エネルギー、グループ</translation>
    </message>
    <message>
        <source>Pixels are</source>
        <translation>画素の値</translation>
    </message>
    <message>
        <source>What was measured: behind the sample the absorption is ln(I0 / I), in fluorescence I / I0 (--signal)</source>
        <translation>測定の種類: 透過では吸収は ln(I0 / I)、蛍光では I / I0 (--signal)</translation>
    </message>
    <message>
        <source>transmission</source>
        <translation>透過</translation>
    </message>
    <message>
        <source>fluorescence</source>
        <translation>蛍光</translation>
    </message>
    <message>
        <source>absorption</source>
        <translation>吸収</translation>
    </message>
    <message>
        <source>I0 comes from</source>
        <translation>I0 の由来</translation>
    </message>
    <message>
        <source>Where the incident intensity comes from</source>
        <translation>入射強度をどこから取るか</translation>
    </message>
    <message>
        <source>what the files name</source>
        <translation>ファイルの指定どおり</translation>
    </message>
    <message>
        <source>images without the sample</source>
        <translation>試料のない画像</translation>
    </message>
    <message>
        <source>an empty region</source>
        <translation>試料のない領域</translation>
    </message>
    <message>
        <source>values or a dataset</source>
        <translation>値またはデータセット</translation>
    </message>
    <message>
        <source>I0</source>
        <translation>I0</translation>
    </message>
    <message>
        <source>Images without the sample (--flat), corners of an empty region, pixels (--i0-region), or a dataset or text of values (--i0)</source>
        <translation>試料のない画像 (--flat)、試料のない領域の角 (画素、--i0-region)、または値のデータセットかテキスト (--i0)</translation>
    </message>
    <message>
        <source>Sel.</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Choose the file</source>
        <translation>ファイルを選びます</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>ダーク</translation>
    </message>
    <message>
        <source>Images without beam, FILE or FILE::PATH: their mean is taken away (--dark)</source>
        <translation>ビームのない画像、FILE または FILE::PATH: その平均を差し引きます (--dark)</translation>
    </message>
    <message>
        <source>Energies</source>
        <translation>エネルギー</translation>
    </message>
    <message>
        <source>A text with the energies, eV, one a line (--energies), or a dataset ::PATH (--energy); empty: what the files say</source>
        <translation>エネルギー (eV) を 1 行に 1 つ書いたテキスト (--energies)、またはデータセット ::PATH (--energy)。空欄ならファイルの指定どおり</translation>
    </message>
    <message>
        <source>Dataset</source>
        <translation>データセット</translation>
    </message>
    <message>
        <source>The dataset with the images of an HDF5 file whose layout is not known (--data)</source>
        <translation>形式の分からない HDF5 ファイルで画像の入っているデータセット (--data)</translation>
    </message>
    <message>
        <source>Energies of the job</source>
        <translation>ジョブのエネルギー</translation>
    </message>
    <message>
        <source>How many energies the job takes (2 to 8), planned where references are given, or which, eV (--pick). All become maps</source>
        <translation>ジョブに入れるエネルギーの数 (2 から 8、標準試料があれば計画して選びます)、またはその値 (eV、--pick)。マップはすべて作ります</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>切り出し</translation>
    </message>
    <message>
        <source>Pixels to keep, from 0 on; x1 and y1 are the first that go (--crop)</source>
        <translation>残す画素、0 から数えます。x1 と y1 からは除きます (--crop)</translation>
    </message>
    <message>
        <source>Bin</source>
        <translation>ビニング</translation>
    </message>
    <message>
        <source>Squares of this many pixels a side become one (--bin)</source>
        <translation>1 辺がこの画素数の正方形を 1 画素にまとめます (--bin)</translation>
    </message>
    <message>
        <source>Align the energies</source>
        <translation>エネルギー間の位置合わせ</translation>
    </message>
    <message>
        <source>Bring images that drift into register (--align)</source>
        <translation>ドリフトした画像の位置を合わせます (--align)</translation>
    </message>
    <message>
        <source>Write into</source>
        <translation>書き込み先</translation>
    </message>
    <message>
        <source>Folder for maps, spectra, job.json and import.json; made when missing (--out)</source>
        <translation>マップ、スペクトル、job.json、import.json を入れるフォルダー。なければ作ります (--out)</translation>
    </message>
    <message>
        <source>Choose the folder</source>
        <translation>フォルダーを選びます</translation>
    </message>
    <message>
        <source>The share of the import that is done</source>
        <translation>インポートの進み具合</translation>
    </message>
    <message>
        <source>Write maps, spectra and a job into the folder and open them</source>
        <translation>マップ、スペクトル、ジョブをフォルダーに書き込んで開きます</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Close this window; while something is being imported, stop that</source>
        <translation>このウィンドウを閉じます。インポート中は中止します</translation>
    </message>
    <message>
        <source>All (* *.*)</source>
        <translation>すべて (* *.*)</translation>
    </message>
    <message>
        <source>%1 holds an import already. Replace it?</source>
        <translation>%1 にはインポートの結果が既にあります。置き換えますか?</translation>
    </message>
    <message>
        <source>Import: choose images or spectra</source>
        <translation>インポート: 画像またはスペクトルの選択</translation>
    </message>
    <message>
        <source>Import: choose reference spectra</source>
        <translation>インポート: 標準試料のスペクトルの選択</translation>
    </message>
    <message>
        <source>Import: choose a file with the energies</source>
        <translation>インポート: エネルギーのファイルの選択</translation>
    </message>
    <message>
        <source>Import: choose the file with I0</source>
        <translation>インポート: I0 のファイルの選択</translation>
    </message>
    <message>
        <source>Import: choose images without beam</source>
        <translation>インポート: ビームのない画像の選択</translation>
    </message>
    <message>
        <source>Import: choose a folder for what is written</source>
        <translation>インポート: 書き込み先フォルダーの選択</translation>
    </message>
    <message>
        <source>FILE or FILE::PATH</source>
        <translation>FILE または FILE::PATH</translation>
    </message>
    <message>
        <source>FILE or ::PATH</source>
        <translation>FILE または ::PATH</translation>
    </message>
    <message>
        <source>and %1 more files</source>
        <translation>ほか %1 個のファイル</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
</context>
<context>
    <name>ImportText</name>
    <message>
        <source>the images are shifted so far that they have nothing in common</source>
        <translation>画像のずれが大きすぎて、共通の領域がありません</translation>
    </message>
    <message>
        <source>the project ends within a group: it is cut off</source>
        <translation>プロジェクトがグループの途中で終わっています: ファイルが途中で切れています</translation>
    </message>
    <message>
        <source>the project is no whole JSON (%1)</source>
        <translation>プロジェクトが完全な JSON ではありません (%1)</translation>
    </message>
    <message>
        <source>the group &quot;%1&quot; has %2 energies and %3 values, or some that are no numbers</source>
        <translation>グループ &quot;%1&quot; にはエネルギーが %2 個、値が %3 個あるか、数でないものがあります</translation>
    </message>
    <message>
        <source>the energy shift of its group, %1 eV, was added</source>
        <translation>グループのエネルギーシフト %1 eV を加えました</translation>
    </message>
    <message>
        <source>the project has no groups</source>
        <translation>プロジェクトにグループがありません</translation>
    </message>
    <message>
        <source>none of the groups of the project is a spectrum</source>
        <translation>プロジェクトのグループにスペクトルがありません</translation>
    </message>
    <message>
        <source>there is no group &quot;%1&quot; (there are %2)</source>
        <translation>グループ &quot;%1&quot; はありません (あるのは %2)</translation>
    </message>
    <message>
        <source>%1 names for %2 columns; decimals take a point</source>
        <translation>列が %2 個あるのに名前は %1 個です。小数点にはピリオドを使います</translation>
    </message>
    <message>
        <source>column %1</source>
        <translation>列 %1</translation>
    </message>
    <message>
        <source>no column is an energy or an angle (the first is &quot;%1&quot; in %2)</source>
        <translation>エネルギーまたは角度の列がありません (最初の列は &quot;%1&quot;、単位 %2)</translation>
    </message>
    <message>
        <source>the energies are in %1, not in eV or keV</source>
        <translation>エネルギーの単位が %1 で、eV でも keV でもありません</translation>
    </message>
    <message>
        <source>the energies are below 100 and were taken for keV</source>
        <translation>エネルギーが 100 未満なので keV と見なしました</translation>
    </message>
    <message>
        <source>there are angles but no spacing of the crystal (Mono.d_spacing), so no energies</source>
        <translation>角度はありますが結晶の面間隔 (Mono.d_spacing) がないので、エネルギーが分かりません</translation>
    </message>
    <message>
        <source>%1 is zero or negative at some energy</source>
        <translation>%1 があるエネルギーで 0 または負です</translation>
    </message>
    <message>
        <source>there is no column &quot;%1&quot; (there are %2)</source>
        <translation>列 &quot;%1&quot; はありません (あるのは %2)</translation>
    </message>
    <message>
        <source>line %1 has more than %2 columns</source>
        <translation>%1 行目の列が %2 より多くあります</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in line %2 is no number</source>
        <translation>%2 行目の &quot;%1&quot; は数ではありません</translation>
    </message>
    <message>
        <source>line %1 has another number of columns than the lines before</source>
        <translation>%1 行目の列の数がそれまでの行と違います</translation>
    </message>
    <message>
        <source>there are fewer than two columns</source>
        <translation>列が 2 つより少ないです</translation>
    </message>
    <message>
        <source>%1 is the energy and cannot be the absorption, too</source>
        <translation>%1 はエネルギーなので、吸収にはなりません</translation>
    </message>
    <message>
        <source>its first column neither rises nor falls: an image, not a spectrum</source>
        <translation>最初の列が増加も減少もしていません。スペクトルではなく画像です</translation>
    </message>
    <message>
        <source>%1 is an incident intensity, not an absorption</source>
        <translation>%1 は入射強度で、吸収ではありません</translation>
    </message>
    <message>
        <source>of its columns %1 was taken, as none has a known name</source>
        <translation>知っている名前の列がないので、%1 を使いました</translation>
    </message>
    <message>
        <source>zlib could not be started</source>
        <translation>zlib を開始できませんでした</translation>
    </message>
    <message>
        <source>it unpacks to far more than such a file holds</source>
        <translation>展開するとこの種のファイルにしては大きすぎます</translation>
    </message>
    <message>
        <source>the compressed data are damaged or end too early</source>
        <translation>圧縮データが壊れているか、途中で終わっています</translation>
    </message>
    <message>
        <source>unpacking it</source>
        <translation>その展開</translation>
    </message>
    <message>
        <source>%1 is no whole HDF5 file: it is damaged or cut off</source>
        <translation>%1 は完全な HDF5 ファイルではありません: 壊れているか、途中で切れています</translation>
    </message>
    <message>
        <source>%1: %2 is no dataset of images</source>
        <translation>%1: %2 は画像のデータセットではありません</translation>
    </message>
    <message>
        <source>%1: %2 holds %3 images</source>
        <translation>%1: %2 には画像が %3 枚あります</translation>
    </message>
    <message>
        <source>%1: %2 holds no data</source>
        <translation>%1: %2 にはデータがありません</translation>
    </message>
    <message>
        <source>%1: %2 is compressed with &quot;%3&quot; (filter %4), which the HDF5 library here does not have</source>
        <translation>%1: %2 は &quot;%3&quot; (フィルター %4) で圧縮されていますが、この HDF5 ライブラリーにはありません</translation>
    </message>
    <message>
        <source>%1: the images in %2 cannot be read, the file is damaged or cut off</source>
        <translation>%1: %2 の画像を読めません。ファイルが壊れているか、途中で切れています</translation>
    </message>
    <message>
        <source>one value</source>
        <translation>値 1 つ</translation>
    </message>
    <message>
        <source>%1: %2 holds no energies</source>
        <translation>%1: %2 にはエネルギーがありません</translation>
    </message>
    <message>
        <source>%1: %2 holds no incident intensities</source>
        <translation>%1: %2 には入射強度がありません</translation>
    </message>
    <message>
        <source>%1: images %2, energies %3</source>
        <translation>%1: 画像 %2、エネルギー %3</translation>
    </message>
    <message>
        <source>  %1 energies, %2 to %3 eV</source>
        <translation>  エネルギー %1 個、%2 から %3 eV</translation>
    </message>
    <message>
        <source>%1 has no layout that is known here: choose --data ::PATH and --energy ::PATH, which --list proposes</source>
        <translation>%1 は知らない形式です: --list の示す --data ::PATH と --energy ::PATH を選んでください</translation>
    </message>
    <message>
        <source>%1: name the dataset in it, FILE::PATH</source>
        <translation>%1: 中のデータセットを FILE::PATH で指定してください</translation>
    </message>
    <message>
        <source>may be: %1</source>
        <translation>候補: %1</translation>
    </message>
    <message>
        <source>%1 holds an image without pixels</source>
        <translation>%1 には画素のない画像があります</translation>
    </message>
    <message>
        <source>%1 holds images of %2 columns and %3 rows, which is more than is taken</source>
        <translation>%1 の画像は %2 列 %3 行で、扱える大きさを超えています</translation>
    </message>
    <message>
        <source>there is nothing to import</source>
        <translation>インポートするものがありません</translation>
    </message>
    <message>
        <source>no folder is named to write into</source>
        <translation>書き込み先のフォルダーが指定されていません</translation>
    </message>
    <message>
        <source>I0 comes from one of --flat, --i0 and --i0-region</source>
        <translation>I0 は --flat、--i0、--i0-region のどれか 1 つで与えます</translation>
    </message>
    <message>
        <source>squares have a side from 1 on, and a job takes 2 to 8 energies</source>
        <translation>正方形の 1 辺は 1 以上、ジョブのエネルギーは 2 から 8 個です</translation>
    </message>
    <message>
        <source>%1 is for images, and there are none</source>
        <translation>%1 は画像のためのものですが、画像がありません</translation>
    </message>
    <message>
        <source>absorptions have no I0: %1 is not for them</source>
        <translation>吸収には I0 がないので、%1 は使えません</translation>
    </message>
    <message>
        <source>the number of valences is %1, that of spectra %2</source>
        <translation>価数は %1 個、スペクトルは %2 個です</translation>
    </message>
    <message>
        <source>pixels without a positive intensity, in all maps: %1; they have no absorption</source>
        <translation>強度が正でない画素が全マップで %1 個あり、吸収がありません</translation>
    </message>
    <message>
        <source>some positions of the pixels are equal: their numbers stand in the maps</source>
        <translation>同じ位置の画素があるので、マップには番号を書きました</translation>
    </message>
    <message>
        <source>a value is no finite number</source>
        <translation>有限の数でない値があります</translation>
    </message>
    <message>
        <source>an energy is zero or negative</source>
        <translation>0 または負のエネルギーがあります</translation>
    </message>
    <message>
        <source>the energies did not rise and were sorted</source>
        <translation>エネルギーが昇順でなかったので並べ替えました</translation>
    </message>
    <message>
        <source>%1 points have only %2 different energies: a map or an image, not a spectrum</source>
        <translation>%1 点に異なるエネルギーが %2 個しかありません。スペクトルではなくマップか画像です</translation>
    </message>
    <message>
        <source>%1 points of equal energy were averaged</source>
        <translation>同じエネルギーの %1 点を平均しました</translation>
    </message>
    <message>
        <source>there are fewer than two points</source>
        <translation>点が 2 つより少ないです</translation>
    </message>
    <message>
        <source>Choose images or spectra first.</source>
        <translation>先に画像またはスペクトルを選んでください。</translation>
    </message>
    <message>
        <source>Choose a folder for what is written.</source>
        <translation>書き込み先のフォルダーを選んでください。</translation>
    </message>
    <message>
        <source>Valences are numbers with commas between them.</source>
        <translation>価数はコンマで区切った数です。</translation>
    </message>
    <message>
        <source>A region is x0,y0,x1,y1 in pixels, with x0 &lt; x1 and y0 &lt; y1.</source>
        <translation>領域は画素で x0,y0,x1,y1 と書き、x0 &lt; x1、y0 &lt; y1 です。</translation>
    </message>
    <message>
        <source>Choose the file that I0 comes from.</source>
        <translation>I0 のファイルを選んでください。</translation>
    </message>
    <message>
        <source>A job takes 2 to 8 energies: a number, or energies with commas between them.</source>
        <translation>ジョブのエネルギーは 2 から 8 個です: 個数、またはコンマで区切ったエネルギー。</translation>
    </message>
    <message>
        <source>planning</source>
        <translation>エネルギーを計画しています</translation>
    </message>
    <message>
        <source>the energies were picked by contrast, not planned: %1</source>
        <translation>エネルギーは計画できず、コントラストで選びました: %1</translation>
    </message>
    <message>
        <source>there is no image near %1 eV (they are at %2 to %3 eV)</source>
        <translation>%1 eV の近くに画像がありません (画像は %2 から %3 eV)</translation>
    </message>
    <message>
        <source>--pick: the image at %1 eV is the nearest of two energies</source>
        <translation>--pick: %1 eV の画像が二つのエネルギーに最も近くなっています</translation>
    </message>
    <message>
        <source>%1 was not measured over all energies of the images</source>
        <translation>%1 は画像のすべてのエネルギーでは測られていません</translation>
    </message>
    <message>
        <source>the job takes the first %1 of %2 spectra</source>
        <translation>%2 個のスペクトルのうち最初の %1 個がジョブに入ります</translation>
    </message>
    <message>
        <source>the valences of the references are not known: type them, or give --valences</source>
        <translation>標準試料の価数が分かりません: 入力するか --valences で与えてください</translation>
    </message>
    <message>
        <source>%1 would be written over, but is read: choose another folder</source>
        <translation>%1 は読み込み元なので上書きできません: 別のフォルダーを選んでください</translation>
    </message>
    <message>
        <source>done</source>
        <translation>完了</translation>
    </message>
    <message>
        <source>the import was stopped</source>
        <translation>インポートを中止しました</translation>
    </message>
    <message>
        <source>there is no image in %1</source>
        <translation>%1 に画像がありません</translation>
    </message>
    <message>
        <source>%1 is a stack of images, which --refs has taken for a spectrum: name it before --refs</source>
        <translation>%1 は画像スタックですが、--refs がスペクトルとして受け取りました。--refs より前に書いてください</translation>
    </message>
    <message>
        <source>aligning</source>
        <translation>位置を合わせています</translation>
    </message>
    <message>
        <source>direct and chained shifts differ by up to %1 pixels: look at the maps</source>
        <translation>直接のずれと積み重ねたずれが最大 %1 画素違います: マップを確かめてください</translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation>%1 に書き込めません</translation>
    </message>
    <message>
        <source>%1 eV</source>
        <translation>%1 eV</translation>
    </message>
    <message>
        <source>the mean absorption falls by %1 from the first to the last energy: are these fluorescence images (--signal fluorescence)?</source>
        <translation>平均の吸収が最初から最後のエネルギーまでに %1 下がっています: 蛍光の画像ではありませんか (--signal fluorescence)?</translation>
    </message>
    <message>
        <source>%1: there is no such file</source>
        <translation>%1: ファイルがありません</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 を読めません</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 は空です</translation>
    </message>
    <message>
        <source>%1 is too large for what it should be</source>
        <translation>%1 はこの種のファイルにしては大きすぎます</translation>
    </message>
    <message>
        <source>%1 needs %2, which this program was built without</source>
        <translation>%1 には %2 が必要ですが、このプログラムはそれなしで作られています</translation>
    </message>
    <message>
        <source>cannot write into %1</source>
        <translation>%1 に書き込めません</translation>
    </message>
    <message>
        <source>it is no spectrum and no stack of images that is known here</source>
        <translation>知っている形式のスペクトルでも画像スタックでもありません</translation>
    </message>
    <message>
        <source>it is a map, not a spectrum</source>
        <translation>スペクトルではなくマップです</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2, %3 points, %4 to %5 eV</source>
        <translation>&quot;%1&quot;: %2、%3 点、%4 から %5 eV</translation>
    </message>
    <message>
        <source>%1 and %2 are two stacks: import each into a folder of its own</source>
        <translation>%1 と %2 は別々のスタックです: それぞれ別のフォルダーにインポートしてください</translation>
    </message>
    <message>
        <source>%1 is no stack of images</source>
        <translation>%1 は画像スタックではありません</translation>
    </message>
    <message>
        <source>%1 is no image</source>
        <translation>%1 は画像ではありません</translation>
    </message>
    <message>
        <source>%1: there is no energy in line %2</source>
        <translation>%1: %2 行目にエネルギーがありません</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; in line %3 is not the unit of all, eV or keV</source>
        <translation>%1: %3 行目の「%2」は、全体に共通の単位 (eV または keV) ではありません</translation>
    </message>
    <message>
        <source>%1: %2 would be keV and %3 eV: name the unit behind the energies</source>
        <translation>%1: %2 は keV、%3 は eV のように見えます。エネルギーの後ろに単位を書いてください</translation>
    </message>
    <message>
        <source>%1 has no incident intensity at %2 eV</source>
        <translation>%1 には %2 eV の入射強度がありません</translation>
    </message>
    <message>
        <source>the header has no points for its %1, or not as many as it says</source>
        <translation>ヘッダーに %1 の点がないか、書かれた数と合いません</translation>
    </message>
    <message>
        <source>the header is cut off or no header of a stack</source>
        <translation>ヘッダーが途中で切れているか、スタックのヘッダーではありません</translation>
    </message>
    <message>
        <source>the energies of %1 are below 100 and were taken for keV</source>
        <translation>%1 のエネルギーが 100 未満なので keV と見なしました</translation>
    </message>
    <message>
        <source>%1 says nothing about energies: give them with --energies FILE, one a line, or name a dataset of HDF5 with --energy ::PATH</source>
        <translation>%1 にはエネルギーがありません。1 行に 1 つ書いたファイルを --energies FILE で指定するか、HDF5 のデータセットを --energy ::PATH で指定してください</translation>
    </message>
    <message>
        <source>%1: the number of images is %2, that of energies %3</source>
        <translation>%1: 画像は %2 枚、エネルギーは %3 個です</translation>
    </message>
    <message>
        <source>%1: an energy is zero, negative or no number</source>
        <translation>%1: 0 か負か、数でないエネルギーがあります</translation>
    </message>
    <message>
        <source>the energies of the images did not rise and were sorted</source>
        <translation>画像のエネルギーが昇順でなかったので並べ替えました</translation>
    </message>
    <message>
        <source>several images have the energy %1 eV</source>
        <translation>エネルギー %1 eV の画像が複数あります</translation>
    </message>
    <message>
        <source>the region %1,%2,%3,%4 does not lie within the %5 pixels of the images</source>
        <translation>領域 %1,%2,%3,%4 は画像の %5 画素に収まりません</translation>
    </message>
    <message>
        <source>squares of %1 pixels are larger than the images</source>
        <translation>%1 画素の正方形は画像より大きいです</translation>
    </message>
    <message>
        <source>%1 has %2 pixels, the images of %3 have %4</source>
        <translation>%1 は %2 画素、%3 の画像は %4 画素です</translation>
    </message>
    <message>
        <source>the dark image</source>
        <translation>ダーク画像</translation>
    </message>
    <message>
        <source>the I0 image</source>
        <translation>I0 画像</translation>
    </message>
    <message>
        <source>the number of I0 images is %1, that of energies %2</source>
        <translation>I0 画像は %1 枚、エネルギーは %2 個です</translation>
    </message>
    <message>
        <source>%1 holds no incident intensity (I0): give an image without the sample, --flat FILE, or an empty region of the images, --i0-region x0,y0,x1,y1</source>
        <translation>%1 には入射強度 (I0) がありません: 試料のない画像 (--flat FILE) か、画像の試料のない領域 (--i0-region x0,y0,x1,y1) を与えてください</translation>
    </message>
    <message>
        <source>%1: the number of incident intensities is %2, that of energies %3</source>
        <translation>%1: 入射強度は %2 個、エネルギーは %3 個です</translation>
    </message>
    <message>
        <source>%1: the incident intensity (I0) is zero or negative at some energy</source>
        <translation>%1: 入射強度 (I0) があるエネルギーで 0 または負です</translation>
    </message>
    <message>
        <source> at %1 eV</source>
        <translation> (%1 eV)</translation>
    </message>
    <message>
        <source>%1: the I0 image is zero or negative in %2 pixels%3, first in column %4 of row %5</source>
        <translation>%1: I0 画像%3の %2 画素が 0 または負です。最初は %5 行 %4 列</translation>
    </message>
    <message>
        <source>%1: the empty region is zero or negative at %2 eV</source>
        <translation>%1: 試料のない領域が %2 eV で 0 または負です</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>%2 の %1 ページ</translation>
    </message>
    <message>
        <source>%1 is no whole TIFF file: it is damaged or cut off</source>
        <translation>%1 は完全な TIFF ファイルではありません: 壊れているか、途中で切れています</translation>
    </message>
    <message>
        <source>there is no image in the TIFF files</source>
        <translation>TIFF ファイルに画像がありません</translation>
    </message>
    <message>
        <source>%1 cannot be read, the file is damaged or cut off</source>
        <translation>%1 を読めません。ファイルが壊れているか、途中で切れています</translation>
    </message>
    <message>
        <source>%1 has %2 x %3 pixels, the first image %4</source>
        <translation>%1 は %2 x %3 画素、最初の画像は %4 です</translation>
    </message>
    <message>
        <source>%1 is a picture in colours, not an image of intensities</source>
        <translation>%1 はカラー画像で、強度の画像ではありません</translation>
    </message>
    <message>
        <source>%1 has values of %2 bits that are not read here</source>
        <translation>%1 の %2 ビットの値には対応していません</translation>
    </message>
    <message>
        <source>%1 is compressed with method %2, which the TIFF library here does not have</source>
        <translation>%1 は方式 %2 で圧縮されていますが、この TIFF ライブラリーにはありません</translation>
    </message>
    <message>
        <source>%1 says that 0 is white; its values were taken as counts all the same</source>
        <translation>%1 では 0 が白とされていますが、値はそのまま計数として扱いました</translation>
    </message>
    <message>
        <source>%1 holds %2 images, but one file per energy holds one</source>
        <translation>%1 には画像が %2 枚ありますが、エネルギーごとのファイルでは 1 枚です</translation>
    </message>
    <message>
        <source>the names of %1 of %2 images hold no energy</source>
        <translation>%2 枚のうち %1 枚の画像の名前にエネルギーがありません</translation>
    </message>
    <message>
        <source>there is an I0 image for other energies, but none for %1 eV</source>
        <translation>ほかのエネルギーの I0 画像はありますが、%1 eV のものがありません</translation>
    </message>
    <message>
        <source>TIFF, number of pages: %1, the first of %2 pixels</source>
        <translation>TIFF、ページ数 %1、最初のページは %2 画素</translation>
    </message>
    <message>
        <source>the name says %1 eV</source>
        <translation>名前によれば %1 eV</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>メモリーが足りません</translation>
    </message>
    <message>
        <source>line %1 of the header is too long</source>
        <translation>ヘッダーの %1 行目が長すぎます</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in line %2 is no field of the form Family.key: value</source>
        <translation>%2 行目の &quot;%1&quot; は Family.key: value の形の項目ではありません</translation>
    </message>
    <message>
        <source>the field %1 in line %2 has no value</source>
        <translation>%2 行目の項目 %1 に値がありません</translation>
    </message>
    <message>
        <source>the field %1 is missing</source>
        <translation>項目 %1 がありません</translation>
    </message>
    <message>
        <source>the field %1 is &quot;%2&quot;</source>
        <translation>項目 %1 が &quot;%2&quot; です</translation>
    </message>
    <message>
        <source>there is no line of dashes below the header</source>
        <translation>ヘッダーの下に破線の行がありません</translation>
    </message>
    <message>
        <source>there are no numbers below the header</source>
        <translation>ヘッダーの下に数がありません</translation>
    </message>
    <message>
        <source>%1: row %2 holds a word that is no number, or far too many numbers</source>
        <translation>%1: %2 行目に数でない語があるか、数が多すぎます</translation>
    </message>
    <message>
        <source>%1: row %2 has %3 columns</source>
        <translation>%1: %2 行目は %3 列です</translation>
    </message>
    <message>
        <source>%1 has %2 pixels, the others have %3</source>
        <translation>%1 は %2 画素、ほかは %3 画素です</translation>
    </message>
    <message>
        <source>%1 lists %2 energies, but there is no %3</source>
        <translation>%1 には %2 個のエネルギーがありますが、%3 がありません</translation>
    </message>
    <message>
        <source>of %1 regions the first was imported</source>
        <translation>%1 個の領域のうち最初のものをインポートしました</translation>
    </message>
    <message>
        <source>stack of %1 images of %2 pixels, %3 to %4 eV, %5 regions</source>
        <translation>%2 画素の画像 %1 枚のスタック、%3 から %4 eV、領域 %5 個</translation>
    </message>
</context>
<context>
    <name>NumberTyping</name>
    <message>
        <source>This is no number; it counts as 0.</source>
        <translation>数値ではないため 0 として扱います。</translation>
    </message>
    <message>
        <source>%1 or %2? It counts as 0.</source>
        <translation>%1 ですか、%2 ですか？ 0 として扱います。</translation>
    </message>
</context>
<context>
    <name>Plan</name>
    <message>
        <source>Planning needs at least two references.</source>
        <translation>計画には標準試料が二つ以上必要です。</translation>
    </message>
    <message>
        <source>Reference %1 reaches from %2 to %3 eV and not to %4 eV, which &quot;%5&quot; asks for.</source>
        <translation>標準試料 %1 の範囲は %2 から %3 eV で、「%5」が求める %4 eV を含みません。</translation>
    </message>
    <message>
        <source>There are no candidates between %1 and %2 eV.</source>
        <translation>%1 から %2 eV の間に候補のエネルギーがありません。</translation>
    </message>
    <message>
        <source>The step makes more than %1 candidates.</source>
        <translation>この刻みでは候補が %1 個を超えます。</translation>
    </message>
    <message>
        <source>%1 energies are too few: the method wants %2 or more.</source>
        <translation>エネルギーが %1 点では足りません。この方法には %2 点以上が必要です。</translation>
    </message>
    <message>
        <source>%1 energies are too many: the method knows %2.</source>
        <translation>エネルギーが %1 点では多すぎます。この方法では %2 点までです。</translation>
    </message>
    <message>
        <source>%1 energies are to be kept, more than the %2 that are planned.</source>
        <translation>残すエネルギーが %1 点あり、計画する %2 点を超えています。</translation>
    </message>
    <message>
        <source>Reference %1 has no edge jump: its pre-edge or post-edge range holds too few points.</source>
        <translation>標準試料 %1 のエッジジャンプが求められません。プリエッジまたはポストエッジの範囲の点が足りません。</translation>
    </message>
    <message>
        <source>References %1 and %2 are alike: no energies can tell them apart.</source>
        <translation>標準試料 %1 と %2 は同じ形をしています。どのエネルギーでも区別できません。</translation>
    </message>
    <message>
        <source>Reference %1 is a mixture of the others: no energies can tell them apart.</source>
        <translation>標準試料 %1 は他の標準試料の混合になっています。どのエネルギーでも区別できません。</translation>
    </message>
    <message>
        <source>No candidates determine the fit.</source>
        <translation>フィットが定まる候補の組がありません。</translation>
    </message>
    <message>
        <source>Planning was stopped.</source>
        <translation>計画を中止しました。</translation>
    </message>
    <message>
        <source>ends + largest reference differences</source>
        <translation>両端と標準試料の差が最大の点</translation>
    </message>
    <message>
        <source>background</source>
        <translation>バックグラウンド</translation>
    </message>
    <message>
        <source>amount and background</source>
        <translation>量とバックグラウンド</translation>
    </message>
    <message>
        <source>%1 against %2</source>
        <translation>%1 と %2 の区別</translation>
    </message>
    <message>
        <source>planned</source>
        <translation>計画</translation>
    </message>
    <message>
        <source> energy/eV  share/%  separates</source>
        <translation> エネルギー/eV  配分/%  役割</translation>
    </message>
    <message>
        <source>fractions and thickness: sigma_V at equal shares, at these shares, change of V per 0.1 eV of wrong energy; sigma_f per reference</source>
        <translation>割合と厚さ: 均等配分での sigma_V、この配分での sigma_V、エネルギーの誤り 0.1 eV あたりの V の変化、標準試料ごとの sigma_f</translation>
    </message>
    <message>
        <source>sigma_V at equal shares, at the best shares, change of V per 0.1 eV; energies/eV</source>
        <translation>均等配分での sigma_V、最良の配分での sigma_V、0.1 eV あたりの V の変化、エネルギー/eV</translation>
    </message>
    <message>
        <source>The same by the number of energies, each planned:</source>
        <translation>エネルギーの数ごとに計画した場合:</translation>
    </message>
    <message>
        <source>detection limits of the fractions: %1</source>
        <translation>割合の検出限界: %1</translation>
    </message>
    <message>
        <source>valence that the method misses without any noise: %1</source>
        <translation>ノイズがなくても生じる価数の誤差: %1</translation>
    </message>
    <message>
        <source>* too few energies to be planned with a background term more</source>
        <translation>* バックグラウンドの項を一つ増やして計画するにはエネルギーが足りません</translation>
    </message>
    <message>
        <source>share of the exposure/%</source>
        <translation>露光の配分/%</translation>
    </message>
    <message>
        <source>energy/eV</source>
        <translation>エネルギー/eV</translation>
    </message>
    <message>
        <source>references in edge jumps</source>
        <translation>標準試料 (ジャンプ単位)</translation>
    </message>
    <message>
        <source>error of V if moved here</source>
        <translation>移した時の V の誤差</translation>
    </message>
    <message>
        <source>planned with one background term more than the fit has</source>
        <translation>フィットよりバックグラウンドの項を一つ増やして計画しました</translation>
    </message>
    <message>
        <source>planned with the background of the fit, without a term more</source>
        <translation>項を増やさず、フィットと同じバックグラウンドで計画しました</translation>
    </message>
    <message>
        <source>Candidates %2 eV apart: %1 found, %3 energies wanted.</source>
        <translation>%2 eV 離れた候補は %1 点で、必要な %3 点に足りません。</translation>
    </message>
    <message>
        <source>%1 eV is to be kept, but lies outside of %2 to %3 eV.</source>
        <translation>残すエネルギー %1 eV が %2 から %3 eV の範囲にありません。</translation>
    </message>
    <message>
        <source>%1 and %2 eV are to be kept, but the spacing asks for %3 eV between energies.</source>
        <translation>残すエネルギー %1 eV と %2 eV の間隔が、指定の %3 eV より狭くなっています。</translation>
    </message>
    <message>
        <source>%1: %2 eV stands there twice.</source>
        <translation>%1：%2 eV が二度書かれています。</translation>
    </message>
    <message>
        <source>these energies find a valence of %2 in a sample of %1 alone, which has %3</source>
        <translation>これらのエネルギーでは、%1 だけの試料の価数が %3 でなく %2 と求まります</translation>
    </message>
    <message>
        <source>method: %1</source>
        <translation>方法: %1</translation>
    </message>
    <message>
        <source>method: %1; it knows two references, %2, and not %3</source>
        <translation>方法: %1（標準試料は %2 の二つを使い、%3 は使いません）</translation>
    </message>
    <message>
        <source>non-equivalent, linear background</source>
        <translation>非等価法、直線バックグラウンド</translation>
    </message>
    <message>
        <source>non-equivalent, Victoreen background</source>
        <translation>非等価法、ビクトリーン型バックグラウンド</translation>
    </message>
    <message>
        <source>four points, least squares</source>
        <translation>4 点法、最小二乗</translation>
    </message>
    <message>
        <source>four points, exact</source>
        <translation>4 点法、厳密解</translation>
    </message>
    <message>
        <source>Energies</source>
        <translation>エネルギー数</translation>
    </message>
    <message>
        <source>How many energies to plan</source>
        <translation>計画するエネルギーの数</translation>
    </message>
    <message>
        <source>From [eV]</source>
        <translation>下限 [eV]</translation>
    </message>
    <message>
        <source>Lowest candidate; empty: 100 eV before the edge, as far as all references reach</source>
        <translation>候補の最も低いエネルギー。空欄ならエッジの 100 eV 手前から（すべての標準試料の範囲内）</translation>
    </message>
    <message>
        <source>To [eV]</source>
        <translation>上限 [eV]</translation>
    </message>
    <message>
        <source>Highest candidate; empty: 200 eV behind the edge, as far as all references reach</source>
        <translation>候補の最も高いエネルギー。空欄ならエッジの 200 eV 先まで（すべての標準試料の範囲内）</translation>
    </message>
    <message>
        <source>Step [eV]</source>
        <translation>刻み [eV]</translation>
    </message>
    <message>
        <source>Step of the candidates; empty: 0.5 eV near the edge, 5 eV elsewhere</source>
        <translation>候補の刻み。空欄ならエッジ付近は 0.5 eV、ほかは 5 eV</translation>
    </message>
    <message>
        <source>Spacing [eV]</source>
        <translation>最小間隔 [eV]</translation>
    </message>
    <message>
        <source>Smallest distance of two energies</source>
        <translation>二つのエネルギーの間隔の下限</translation>
    </message>
    <message>
        <source>Keep [eV]</source>
        <translation>必ず含む [eV]</translation>
    </message>
    <message>
        <source>Energies that belong to the plan in any case, separated by blanks</source>
        <translation>必ず計画に含めるエネルギー。空白で区切る</translation>
    </message>
    <message>
        <source>Counts</source>
        <translation>カウント数</translation>
    </message>
    <message>
        <source>Transmission: quanta of I0 per exposure and pixel; fluorescence: quanta where the absorption is 1</source>
        <translation>透過法では露光と画素あたりの I0 の光子数、蛍光法では吸収が 1 のときの光子数</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>バックグラウンド</translation>
    </message>
    <message>
        <source>Transmission: absorption of everything else; fluorescence: the background&apos;s share of the signal, below 1</source>
        <translation>透過法ではほかのすべての吸収、蛍光法では信号に占めるバックグラウンドの割合（1 未満）</translation>
    </message>
    <message>
        <source>Reproducible to [eV]</source>
        <translation>再現性 [eV]</translation>
    </message>
    <message>
        <source>Standard deviation of the monochromator&apos;s energies</source>
        <translation>分光器のエネルギーの標準偏差</translation>
    </message>
    <message>
        <source>Amount t</source>
        <translation>総量 t</translation>
    </message>
    <message>
        <source>Amount of the samples to plan for, as the method gives it; empty: that of the target, or 1</source>
        <translation>想定する試料の量（計算法の値）。空欄なら全体試料の値、なければ 1</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>想定する試料</translation>
    </message>
    <message>
        <source>Fractions of the references in the samples to plan for, such as 1 0; 0.5 0.5; empty: each reference alone and the equal mixture</source>
        <translation>想定する試料での標準試料の割合。例: 1 0; 0.5 0.5。空欄なら各標準試料だけのものと等量の混合</translation>
    </message>
    <message>
        <source>%1; edge %2 eV; references (valence): %3</source>
        <translation>%1。エッジ %2 eV。標準試料（価数）: %3</translation>
    </message>
    <message>
        <source>All references have the valence %1: there is none to be told.</source>
        <translation>すべての標準試料の価数が %1 なので、求める価数の違いがありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number that can be planned with.</source>
        <translation>「%1」は計画に使える数値ではありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a number above 0.</source>
        <translation>「%1」は 0 より大きい数値にしてください。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a number, not below 0.</source>
        <translation>「%1」は 0 以上の数値にしてください。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a whole number from 1 to 100.</source>
        <translation>「%1」は 1 から 100 までの整数にしてください。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be a share from 0 to below 1.</source>
        <translation>「%1」は 0 以上 1 未満の割合にしてください。</translation>
    </message>
    <message>
        <source>The sample &quot;%1&quot; must be %2 fractions, one per reference, with a sum above 0.</source>
        <translation>試料「%1」には標準試料ごとに一つ、%2 個の割合を、合計が 0 より大きくなるように入れてください。</translation>
    </message>
    <message>
        <source>The energies in the window are not compared: %1</source>
        <translation>画面のエネルギーとは比較していません: %1</translation>
    </message>
    <message>
        <source>in the window</source>
        <translation>画面のもの</translation>
    </message>
    <message>
        <source>each alone, equal parts</source>
        <translation>各単独と等量混合</translation>
    </message>
</context>
<context>
    <name>PlanPage</name>
    <message>
        <source>Plan energies</source>
        <translation>エネルギーの計画</translation>
    </message>
    <message>
        <source>Transmission</source>
        <translation>透過法</translation>
    </message>
    <message>
        <source>Fluorescence</source>
        <translation>蛍光法</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>測定法</translation>
    </message>
    <message>
        <source>How the maps will be measured: it gives the noise</source>
        <translation>マップの測定法。ノイズがこれで決まる</translation>
    </message>
    <message>
        <source>One background term more than the fit</source>
        <translation>バックグラウンドの項を一つ増やす</translation>
    </message>
    <message>
        <source>Plan as if the background had one term more, where the number of energies allows it: without it the energies cluster at the edge and fail on real data</source>
        <translation>エネルギーの数が許すかぎり、バックグラウンドの項をフィットより一つ多く見込んで計画する。見込まないとエネルギーがエッジに集まり、実データで失敗する</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>計画</translation>
    </message>
    <message>
        <source>Plan the energies for the references loaded and the method that is set</source>
        <translation>読み込んだ標準試料と選んだ計算法でエネルギーを計画する</translation>
    </message>
    <message>
        <source>Use these</source>
        <translation>これを使う</translation>
    </message>
    <message>
        <source>Copy table</source>
        <translation>表をコピー</translation>
    </message>
    <message>
        <source>Put the plan on the clipboard as text</source>
        <translation>計画を文字としてクリップボードに入れる</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Only %1 energy rows are empty, the plan has %2 energies</source>
        <translation>空いているエネルギー行は %1 行だけで、計画のエネルギーは %2 個です</translation>
    </message>
    <message>
        <source>Fill the empty energy rows with the planned energies; rows with a map or an energy stay as they are</source>
        <translation>空いているエネルギー行に計画したエネルギーを入れる。マップかエネルギーのある行は変わらない</translation>
    </message>
    <message>
        <source>Energy [eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>Share [%]</source>
        <translation>配分 [%]</translation>
    </message>
    <message>
        <source>Separates</source>
        <translation>区別するもの</translation>
    </message>
    <message>
        <source>The planned energies, the share of the whole exposure that each should get, and what it tells</source>
        <translation>計画したエネルギー、露光全体からの配分、そこで区別できるもの</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>組</translation>
    </message>
    <message>
        <source>σV at shares</source>
        <translation>配分時の σV</translation>
    </message>
    <message>
        <source>ΔV / 0.1 eV</source>
        <translation>ΔV / 0.1 eV</translation>
    </message>
    <message>
        <source>Energies [eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>Standard error of the valence of a pixel at equal exposures and at the best shares, and the change of the valence when all energies are wrong by the same 0.1 eV; roots of the mean squares over the samples</source>
        <translation>画素の価数の標準誤差（等しい露光と最良の配分）と、すべてのエネルギーが同じ 0.1 eV ずれたときの価数の変化。想定する試料にわたる二乗平均の平方根</translation>
    </message>
    <message>
        <source>%1 energies</source>
        <translation>%1 エネルギー</translation>
    </message>
</context>
<context>
    <name>PopBase</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
</context>
<context>
    <name>RegionsView</name>
    <message>
        <source>Regions</source>
        <translation>領域</translation>
    </message>
    <message>
        <source>Mean valence, weighted with the amounts, and mean amount per pixel; scatter of the valences and what the noise explains of it; chi² / (n - p) of the mean spectrum</source>
        <translation>総量で重み付けした平均価数と画素あたりの平均総量、価数のばらつきとそのうちノイズで説明できる分、平均スペクトルの χ² / (n - p)</translation>
    </message>
    <message>
        <source>A click chooses the region whose spectrum is shown; corners in pixels, amount: the sum over the region, mean: weighted with the amounts, ±: its standard error</source>
        <translation>クリックした領域のスペクトルを表示する。角の座標は画素、総量は領域内の和、平均は総量の重み付き、± はその標準誤差</translation>
    </message>
    <message>
        <source>Copy table</source>
        <translation>表をコピー</translation>
    </message>
    <message>
        <source>Remove this region</source>
        <translation>この領域を消去</translation>
    </message>
    <message>
        <source>Regions: clear</source>
        <translation>領域：すべて消去</translation>
    </message>
    <message>
        <source>Region %1</source>
        <translation>領域 %1</translation>
    </message>
    <message>
        <source>Pixel %1, %2</source>
        <translation>画素 %1, %2</translation>
    </message>
    <message>
        <source>No region: drag one with Control in the result map.</source>
        <translation>領域がありません：結果マップを Control キーを押しながらドラッグしてください。</translation>
    </message>
    <message>
        <source>Energy [eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>Absorption</source>
        <translation>吸収</translation>
    </message>
    <message>
        <source>Residual / s</source>
        <translation>残差 / s</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>フィット</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>バックグラウンド</translation>
    </message>
</context>
<context>
    <name>Series</name>
    <message>
        <source>Fractions of the target</source>
        <translation>全体試料の比率</translation>
    </message>
    <message>
        <source>Fractions of the target by linear combination</source>
        <translation>線形結合フィッティングによる全体試料の比率</translation>
    </message>
    <message>
        <source>Fractions of the material in the map</source>
        <translation>マップ中の物質の比率</translation>
    </message>
    <message>
        <source>reference %1 (valence %2)</source>
        <translation>標準試料 %1（価数 %2）</translation>
    </message>
    <message>
        <source>Number of the job</source>
        <translation>ジョブの番号</translation>
    </message>
</context>
<context>
    <name>ShiftDialog</name>
    <message>
        <source>Looking for the energy shift of the maps...</source>
        <translation>マップのエネルギーのずれを探しています...</translation>
    </message>
    <message>
        <source>Energy shift of the maps</source>
        <translation>マップのエネルギーのずれ</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Add the shift to the dE of all references and calculate</source>
        <translation>すべての標準試料の dE にずれを加えて計算する</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>cBar</name>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>Drag an end of the colours to stretch them, double-click to undo the stretch, right-click for other colours</source>
        <translation>端をドラッグすると色が伸縮し、ダブルクリックで元に戻る。右クリックで別の配色</translation>
    </message>
</context>
</TS>
